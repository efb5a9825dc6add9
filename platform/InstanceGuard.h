#pragma once

#include <QString>

class QDBusConnection;
class QLocalServer;

// Tells whether another copy of the program runs for this user. The first copy
// owns a name on the session bus (or, with no session bus, a local socket),
// which the system frees when that copy ends, however it ends.
class InstanceGuard
{
public:
    static constexpr const char *ServiceName = "jp.fernwick.Lantern";

    // Claims the name; false when another running copy holds it.
    static bool claim();
    // The same on the given bus; a bus that is not connected means the
    // local socket.
    static bool claim(const QDBusConnection &bus);
    static bool usesSessionBus();

private:
    static bool claimOnBus(const QDBusConnection &bus);
    static bool claimSocket();

    static QLocalServer *s_server;
    static bool s_sessionBus;
};
