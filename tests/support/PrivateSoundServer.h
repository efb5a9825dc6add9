#pragma once

#include "support/ToolOutput.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QTemporaryDir>
#include <QThread>

// A PulseAudio server of the test's own with one null sink, so that sound
// can be played and watched on a machine without speakers. It points
// PULSE_SERVER at itself; start it before anything opens an audio device.
class PrivateSoundServer
{
public:
    PrivateSoundServer() = default;
    // Nothing of the server's is kept: it may simply be ended.
    ~PrivateSoundServer()
    {
        m_server.kill();
        m_server.waitForFinished(3000);
    }

    // False (with the reason in problem()) when PulseAudio is not installed
    // or does not come up.
    bool start()
    {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("pulseaudio"));
        if (program.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("pactl")).isEmpty() || !m_dir.isValid()) {
            m_problem = QStringLiteral("PulseAudio is not installed, or there is no temporary folder");
            return false;
        }
        const QString socket = m_dir.filePath(QStringLiteral("native"));
        m_address = QStringLiteral("unix:") + socket;
        // The server keeps its cookie and state in a home of its own.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), m_dir.path());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("config")));
        environment.remove(QStringLiteral("PULSE_SERVER"));
        m_server.setProcessEnvironment(environment);
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        m_server.start(program, QProcess::splitCommand(QStringLiteral("-n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes"
                                                                      " -L \"module-null-sink sink_name=lantern_test\""
                                                                      " -L \"module-native-protocol-unix auth-anonymous=1 socket=%1\"")
                                                           .arg(socket)));
        const QDeadlineTimer deadline(10000);
        while (m_server.waitForStarted(5000) && !deadline.hasExpired()) {
            if (!sinkState().isEmpty()) {
                qputenv("PULSE_SERVER", m_address.toLocal8Bit());
                return true;
            }
            QThread::msleep(100);
        }
        m_problem = QStringLiteral("pulseaudio did not answer: ") + m_server.errorString() + QString::fromLocal8Bit(m_server.readAll());
        return false;
    }
    QString problem() const { return m_problem; }

    // The state of the null sink as pactl names it: "RUNNING" while
    // something plays into it, "IDLE" or "SUSPENDED" otherwise.
    QString sinkState() const
    {
        // One line per sink: index, name, module, sample spec, state.
        for (const QString &line : pactl(QStringLiteral("sinks"))) {
            const QStringList fields = line.split(QLatin1Char('\t'));
            if (fields.size() >= 5 && fields.at(1) == QLatin1String("lantern_test"))
                return fields.at(4).trimmed();
        }
        return {};
    }
    // How many streams are connected to the sink.
    int streamCount() const { return int(pactl(QStringLiteral("sink-inputs")).size()); }

private:
    // The lines of `pactl list short <what>`.
    QStringList pactl(const QString &what) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PULSE_SERVER"), m_address);
        return toolOutput(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("short"), what}, 5000, environment)
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    QTemporaryDir m_dir;
    QProcess m_server;
    QString m_address;
    QString m_problem;
};
