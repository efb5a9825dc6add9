#include "platform/LogindPowerControl.h"
#include "platform/RuntimeLog.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDateTime>

namespace {

QDBusMessage managerCall(const QString &method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.login1"),
                                          QStringLiteral("/org/freedesktop/login1"),
                                          QStringLiteral("org.freedesktop.login1.Manager"), method);
}

void send(const QDBusMessage &message)
{
    // The result is ignored, as every power request's is.
    const QDBusMessage reply = QDBusConnection::systemBus().call(message, QDBus::Block, 5000);
    if (reply.type() == QDBusMessage::ErrorMessage)
        RuntimeLog::note("LogindPowerControl", reply.errorMessage());
}

} // namespace

void LogindPowerControl::powerOff()
{
    QDBusMessage message = managerCall(QStringLiteral("PowerOff"));
    message << false; // not interactive
    send(message);
}

void LogindPowerControl::powerOffForcedAfter(int seconds)
{
    // logind closes the session's programs when the scheduled time comes.
    const quint64 when = quint64(QDateTime::currentMSecsSinceEpoch() + seconds * 1000LL) * 1000ULL;
    QDBusMessage message = managerCall(QStringLiteral("ScheduleShutdown"));
    message << QStringLiteral("poweroff") << when;
    send(message);
}

void LogindPowerControl::logOff()
{
    const QString session = qEnvironmentVariable("XDG_SESSION_ID");
    if (session.isEmpty()) {
        RuntimeLog::note("LogindPowerControl", QStringLiteral("no session to end"));
        return;
    }
    QDBusMessage message = managerCall(QStringLiteral("TerminateSession"));
    message << session;
    send(message);
}
