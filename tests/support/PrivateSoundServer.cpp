#include "support/PrivateSoundServer.h"
#include "support/ToolOutput.h"

#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QThread>

PrivateSoundServer::~PrivateSoundServer()
{
    // Nothing of the server's is kept: it may simply be ended.
    m_server.kill();
    m_server.waitForFinished(3000);
}

bool PrivateSoundServer::start()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("pulseaudio"));
    if (program.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("pactl")).isEmpty()) {
        m_problem = QStringLiteral("PulseAudio is not installed");
        return false;
    }
    if (!m_dir.isValid()) {
        m_problem = QStringLiteral("no temporary folder");
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
    m_server.start(program, {QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                             QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--use-pid-file=no"),
                             QStringLiteral("--disable-shm=yes"),
                             QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=lantern_test"),
                             QStringLiteral("-L"),
                             QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket});
    if (!m_server.waitForStarted(5000)) {
        m_problem = QStringLiteral("pulseaudio did not start: ") + m_server.errorString();
        return false;
    }
    const QDeadlineTimer deadline(10000);
    while (!deadline.hasExpired()) {
        if (!sinkState().isEmpty()) {
            qputenv("PULSE_SERVER", m_address.toLocal8Bit());
            return true;
        }
        if (m_server.state() == QProcess::NotRunning)
            break;
        QThread::msleep(100);
    }
    m_problem = QStringLiteral("pulseaudio did not answer: ") + QString::fromLocal8Bit(m_server.readAll());
    return false;
}

QString PrivateSoundServer::pactl(const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PULSE_SERVER"), m_address);
    return toolOutput(QStringLiteral("pactl"), arguments, 5000, environment);
}

QString PrivateSoundServer::sinkState() const
{
    // One line per sink: index, name, module, sample spec, state.
    const QStringList lines = pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sinks")})
                                  .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (fields.size() >= 5 && fields.at(1) == QLatin1String("lantern_test"))
            return fields.at(4).trimmed();
    }
    return {};
}

int PrivateSoundServer::streamCount() const
{
    return int(pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sink-inputs")})
                   .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                   .size());
}
