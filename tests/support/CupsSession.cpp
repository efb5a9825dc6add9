#include "support/CupsSession.h"
#include "support/ToolOutput.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

static const QString script = QStringLiteral(LANTERN_SOURCE_DIR "/scripts/cups-session.sh");

CupsSession::~CupsSession()
{
    stop();
}

CupsSession::Start CupsSession::start()
{
    if (!m_folder.isValid()) {
        m_problem = QStringLiteral("no temporary folder");
        return Start::Failed;
    }
    QProcess process;
    process.start(QStringLiteral("bash"), { script, QStringLiteral("start"), m_folder.path() });
    if (!process.waitForFinished(60000)) {
        m_problem = QStringLiteral("the session script did not finish");
        return Start::Failed;
    }
    m_problem = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (process.exitCode() == 77)
        return Start::NotPossibleHere;
    if (process.exitCode() != 0)
        return Start::Failed;
    m_running = true;

    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals > 0)
            qputenv(line.left(equals).toUtf8().constData(), line.mid(equals + 1).toUtf8());
    }
    m_outputFolder = qEnvironmentVariable("LANTERN_CUPS_PDF_DIR");
    return m_outputFolder.isEmpty() ? Start::Failed : Start::Started;
}

void CupsSession::stop()
{
    if (!m_running)
        return;
    QProcess::execute(QStringLiteral("bash"), { script, QStringLiteral("stop"), m_folder.path() });
    m_running = false;
}

QStringList CupsSession::jobs(const QString &which) const
{
    return toolOutput(QStringLiteral("lpstat"), { QStringLiteral("-W"), which, QStringLiteral("-o"), QStringLiteral("PDF") },
                      10000)
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList CupsSession::waitForPdfs(int timeoutMs) const
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!jobs(QStringLiteral("not-completed")).isEmpty() && !deadline.hasExpired())
        QThread::msleep(100);
    const QDir output(m_outputFolder);
    QStringList pdfs;
    for (const QString &name : output.entryList({ QStringLiteral("*.pdf") }, QDir::Files, QDir::Time | QDir::Reversed))
        pdfs.append(output.filePath(name));
    return pdfs;
}
