#pragma once

#include <QDBusAbstractAdaptor>

class Workspace;

// The workspace's commands on the session bus, for other programs: the
// program's service name, object "/Lantern", interface "jp.fernwick.Lantern".
// Execute takes "[X]" or "[QUIT]" (both close the workspace the orderly way)
// and refuses every other command.
class WorkspaceBus : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "jp.fernwick.Lantern")

public:
    static constexpr const char *ObjectPath = "/Lantern";
    static constexpr const char *Interface = "jp.fernwick.Lantern";

    explicit WorkspaceBus(Workspace *workspace);

    // Registers the workspace's object on the session bus; false without a bus.
    bool registerObject();

public slots:
    bool Execute(const QString &command);

private:
    Workspace *m_workspace;
};
