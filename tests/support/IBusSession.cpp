#include "IBusSession.h"

#include <QByteArray>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <cstdio>

namespace {

QString sessionScript()
{
    return qEnvironmentVariable("LANTERN_SOURCE_DIR") + QStringLiteral("/scripts/ibus-session.sh");
}

} // namespace

bool IBusSession::available()
{
    return qEnvironmentVariableIsSet("LANTERN_IBUS_SESSION");
}

bool IBusSession::runInside(int argc, char **argv, int &status)
{
    if (available())
        return false;
    const bool display = !qEnvironmentVariableIsEmpty("DISPLAY")
        || !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty();
    if (!display
        || QStandardPaths::findExecutable(QStringLiteral("ibus-daemon")).isEmpty()
        || !QFileInfo(QStringLiteral("/usr/lib/ibus-mozc/ibus-engine-mozc")).isExecutable()
        || !QFileInfo::exists(sessionScript())) {
        std::fprintf(stderr, "No display or no IBus with Mozc: the input-method cases skip.\n");
        return false;
    }
    QStringList arguments{sessionScript(), QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteFilePath()};
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QProcess session;
    session.setProcessChannelMode(QProcess::ForwardedChannels);
    session.start(QStringLiteral("bash"), arguments);
    session.waitForFinished(-1);
    status = session.exitStatus() == QProcess::NormalExit ? session.exitCode() : 1;
    if (status == 77) {
        std::fprintf(stderr, "The IBus session could not start: the input-method cases skip.\n");
        return false;
    }
    return true;
}
