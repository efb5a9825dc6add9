#include "platform/InstanceGuard.h"
#include "platform/RuntimeLog.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QLocalServer>
#include <QLocalSocket>

#include <unistd.h>

QLocalServer *InstanceGuard::s_server = nullptr;
bool InstanceGuard::s_sessionBus = false;

bool InstanceGuard::claim()
{
    return claim(QDBusConnection::sessionBus());
}

bool InstanceGuard::claim(const QDBusConnection &bus)
{
    s_sessionBus = bus.isConnected();
    return s_sessionBus ? claimOnBus(bus) : claimSocket();
}

bool InstanceGuard::claimOnBus(const QDBusConnection &bus)
{
    const QString name = QString::fromLatin1(ServiceName);
    // Without queueing, a name that is taken fails at once.
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = bus.interface()->registerService(name, QDBusConnectionInterface::DontQueueService,
                                                                                                              QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid())
        return reply.value() == QDBusConnectionInterface::ServiceRegistered;

    // The answer was lost or refused: who holds the name now tells whether
    // another copy runs. When nobody can tell, the window opens all the same,
    // rather than never.
    RuntimeLog::note("InstanceGuard", reply.error().message());
    const QDBusReply<QString> owner = bus.interface()->serviceOwner(name);
    return !owner.isValid() || owner.value() == bus.baseService();
}

bool InstanceGuard::claimSocket()
{
    const QString socketName = QStringLiteral("%1-%2").arg(QString::fromLatin1(ServiceName)).arg(getuid());
    QLocalSocket probe;
    probe.connectToServer(socketName);
    if (probe.waitForConnected(200))
        return false;
    // Nobody answers: a socket left by a copy that crashed is stale.
    QLocalServer::removeServer(socketName);
    auto *server = new QLocalServer;
    if (!server->listen(socketName)) {
        // The name is taken after all (another copy starting this very
        // moment) or cannot be had: this copy holds nothing, so it must not
        // run beside one that may.
        RuntimeLog::note("InstanceGuard", server->errorString());
        delete server;
        return false;
    }
    delete s_server;
    s_server = server;
    return true;
}

bool InstanceGuard::usesSessionBus()
{
    return s_sessionBus;
}
