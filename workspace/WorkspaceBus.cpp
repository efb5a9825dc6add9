#include "workspace/WorkspaceBus.h"

#include "workspace/Workspace.h"

#include <QDBusConnection>
#include <QMetaObject>

WorkspaceBus::WorkspaceBus(Workspace *workspace)
    : QDBusAbstractAdaptor(workspace)
    , m_workspace(workspace)
{
}

bool WorkspaceBus::registerObject()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    return bus.registerObject(QString::fromLatin1(ObjectPath), m_workspace);
}

bool WorkspaceBus::Execute(const QString &command)
{
    if (command != u"[X]" && command != u"[QUIT]")
        return false;
    // The answer goes back first; the window closes once the call is done.
    QMetaObject::invokeMethod(
        m_workspace, [workspace = m_workspace] { workspace->closeWithMode(Workspace::ByCode); },
        Qt::QueuedConnection);
    return true;
}
