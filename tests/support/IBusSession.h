#pragma once

#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#include <cstdio>

// Tests that need the real input method run inside a private IBus + Mozc
// session as an unprivileged user, on an X display of its own
// (scripts/ibus-session.sh). Such a test program starts itself again inside
// one; without a display or without IBus and Mozc its cases skip.
namespace IBusSession {

// Whether the input method is really there (inside a session).
inline bool available()
{
    return qEnvironmentVariableIsSet("LANTERN_IBUS_SESSION");
}

// Outside a session: runs this program again inside one, puts its exit
// status in `status` and returns true. Inside one (or when none can be
// started) returns false: the caller runs its tests.
inline bool runInside(int argc, char **argv, int &status)
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

} // namespace IBusSession

#define LANTERN_IBUS_TEST_MAIN(TestClass) \
    int main(int argc, char **argv) \
    { \
        int status = 0; \
        if (IBusSession::runInside(argc, argv, status)) \
            return status; \
        QApplication app(argc, argv); \
        TestClass test; \
        return QTest::qExec(&test, argc, argv); \
    }
