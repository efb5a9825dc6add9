#pragma once

#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#include <cstdio>

// Tests that need the real input method run inside a private session of one
// framework with Mozc (IBus, or Fcitx 5 when LANTERN_IM_FRAMEWORK=fcitx5) as
// an unprivileged user, on an X display of its own (scripts/im-session.sh).
// Such a test program starts itself again inside one. A machine that cannot
// hold the session (no display, the framework or Mozc not installed) makes
// the program exit with 77, which the test run counts as a skip.
namespace IBusSession {

// The framework asked for: "ibus" unless told otherwise.
inline QString framework()
{
    const QString asked = qEnvironmentVariable("LANTERN_IM_FRAMEWORK");
    return asked.isEmpty() ? QStringLiteral("ibus") : asked;
}

// Whether the input method is really there (inside a session).
inline bool available()
{
    return qEnvironmentVariableIsSet("LANTERN_IM_SESSION");
}

// Outside a session: runs this program again inside one, puts its exit
// status in `status` (77 when no session could start) and returns true.
// Inside one returns false: the caller runs its tests.
inline bool runInside(int argc, char **argv, int &status)
{
    if (available())
        return false;
    // The script itself says why (and exits with 77) when this machine has
    // no display, framework or Mozc.
    const QString script = qEnvironmentVariable("LANTERN_SOURCE_DIR") + QStringLiteral("/scripts/im-session.sh");
    QStringList arguments{script, framework(), QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteFilePath()};
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
        std::fprintf(stderr, "No %s session with Mozc on a display here: skipped.\n", qPrintable(framework()));
    return true;
}

} // namespace IBusSession

#define LANTERN_IBUS_TEST_MAIN(TestClass)               \
    int main(int argc, char **argv)                     \
    {                                                   \
        int status = 0;                                 \
        if (IBusSession::runInside(argc, argv, status)) \
            return status;                              \
        QApplication app(argc, argv);                   \
        TestClass test;                                 \
        return QTest::qExec(&test, argc, argv);         \
    }
