#include "platform/InstanceGuard.h"
#include "platform/RuntimeLog.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QLocalServer>
#include <QLocalSocket>

#include <unistd.h>

QLocalServer *InstanceGuard::s_server = nullptr;
bool InstanceGuard::s_sessionBus = false;

bool InstanceGuard::claim()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        s_sessionBus = true;
        // Without queueing, a name that is taken fails at once.
        const auto reply = bus.interface()->registerService(QString::fromLatin1(ServiceName),
                                                             QDBusConnectionInterface::DontQueueService,
                                                             QDBusConnectionInterface::DontAllowReplacement);
        return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    }

    const QString socketName = QStringLiteral("%1-%2").arg(QString::fromLatin1(ServiceName)).arg(getuid());
    QLocalSocket probe;
    probe.connectToServer(socketName);
    if (probe.waitForConnected(200))
        return false;
    // Nobody answers: a socket left by a copy that crashed is stale.
    QLocalServer::removeServer(socketName);
    s_server = new QLocalServer;
    if (!s_server->listen(socketName))
        RuntimeLog::note("InstanceGuard", s_server->errorString());
    return true;
}

bool InstanceGuard::usesSessionBus()
{
    return s_sessionBus;
}
