#include "IBusSession.h"

#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <cstdio>

bool IBusSession::available()
{
    return qEnvironmentVariableIsSet("LANTERN_IBUS_SESSION");
}

bool IBusSession::runInside(int argc, char **argv, int &status)
{
    if (available())
        return false;
    // The script itself tells (with 77) when this machine has no display, IBus
    // or Mozc.
    const QString script = qEnvironmentVariable("LANTERN_SOURCE_DIR") + QStringLiteral("/scripts/ibus-session.sh");
    QStringList arguments{script, QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteFilePath()};
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QProcess session;
    session.setProcessChannelMode(QProcess::ForwardedChannels);
    status = 77;
    if (QFileInfo::exists(script)) {
        session.start(QStringLiteral("bash"), arguments);
        session.waitForFinished(-1);
        status = session.exitStatus() == QProcess::NormalExit ? session.exitCode() : 1;
    }
    if (status == 77)
        std::fprintf(stderr, "No IBus session with Mozc on a display here: the input-method cases skip.\n");
    return status != 77;
}
