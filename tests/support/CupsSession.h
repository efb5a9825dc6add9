#pragma once

#include "support/ToolOutput.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <utility>

// A private CUPS scheduler with the cups-pdf queue "PDF" for one test program
// (scripts/cups-session.sh): start it before the first printer is asked for
// (libcups reads CUPS_SERVER once), print, wait for the PDFs.
class CupsSession
{
public:
    CupsSession() = default;
    ~CupsSession() { stop(); }
    CupsSession(const CupsSession &) = delete;
    CupsSession &operator=(const CupsSession &) = delete;

    enum class Start { Started,
                       NotPossibleHere,
                       Failed };
    // Starts the scheduler and points this process's CUPS clients at it.
    // NotPossibleHere means the test should be skipped; problem() says why.
    Start start()
    {
        QProcess process;
        if (m_folder.isValid())
            process.start(QStringLiteral("bash"), {script(), QStringLiteral("start"), m_folder.path()});
        if (!process.waitForFinished(60000)) {
            m_problem = QStringLiteral("no temporary folder, or the session script did not finish");
            return Start::Failed;
        }
        m_problem = QString::fromUtf8(process.readAllStandardError()).trimmed();
        if (process.exitCode() != 0)
            return process.exitCode() == 77 ? Start::NotPossibleHere : Start::Failed;
        m_running = true;
        // The script prints the variables that point the clients at it, one NAME=value a line.
        for (const QString &line : QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'))) {
            const qsizetype equals = line.indexOf(QLatin1Char('='));
            if (equals > 0)
                qputenv(line.left(equals).toUtf8().constData(), line.mid(equals + 1).toUtf8());
        }
        m_outputFolder = qEnvironmentVariable("LANTERN_CUPS_PDF_DIR");
        return m_outputFolder.isEmpty() ? Start::Failed : Start::Started;
    }

    void stop()
    {
        if (std::exchange(m_running, false))
            QProcess::execute(QStringLiteral("bash"), {script(), QStringLiteral("stop"), m_folder.path()});
    }
    QString problem() const { return m_problem; }

    // The queue's jobs in one state ("completed", "not-completed"), one a line.
    QStringList jobs(const QString &which) const
    {
        return toolOutput(QStringLiteral("lpstat"), {QStringLiteral("-W"), which, QStringLiteral("-o"), QStringLiteral("PDF")},
                          10000)
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // Waits until the queue is empty and returns the PDFs cups-pdf wrote so far, oldest first.
    QStringList waitForPdfs(int timeoutMs = 60000) const
    {
        const QDeadlineTimer deadline(timeoutMs);
        while (!jobs(QStringLiteral("not-completed")).isEmpty() && !deadline.hasExpired())
            QThread::msleep(100);
        const QDir output(m_outputFolder);
        QStringList pdfs;
        for (const QString &name : output.entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time | QDir::Reversed))
            pdfs.append(output.filePath(name));
        return pdfs;
    }

private:
    static QString script() { return QStringLiteral(LANTERN_SOURCE_DIR "/scripts/cups-session.sh"); }

    QTemporaryDir m_folder;
    QString m_outputFolder;
    QString m_problem;
    bool m_running = false;
};

// Starts a test program's session in its initTestCase: skipped where this
// machine cannot run a private scheduler, failed where it should but did not.
#define LANTERN_START_CUPS_SESSION(session)     \
    switch ((session).start()) {                \
    case CupsSession::Start::NotPossibleHere:   \
        QSKIP(qPrintable((session).problem())); \
    case CupsSession::Start::Failed:            \
        QFAIL(qPrintable((session).problem())); \
    case CupsSession::Start::Started:           \
        break;                                  \
    }
