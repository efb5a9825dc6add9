#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// A private CUPS scheduler with the cups-pdf queue "PDF" for one test program
// (scripts/cups-session.sh): start it before the first printer is asked for
// (libcups reads CUPS_SERVER once), print, wait for the PDFs.
class CupsSession
{
public:
    CupsSession() = default;
    ~CupsSession();

    CupsSession(const CupsSession &) = delete;
    CupsSession &operator=(const CupsSession &) = delete;

    enum class Start { Started, NotPossibleHere, Failed };
    // Starts the scheduler and points this process's CUPS clients at it.
    // NotPossibleHere means the test should be skipped; problem() says why.
    Start start();
    void stop();
    QString problem() const { return m_problem; }

    // Where cups-pdf writes the jobs' PDFs.
    QString outputFolder() const { return m_outputFolder; }
    // The queue's jobs in one state ("completed", "not-completed"), one a line.
    QStringList jobs(const QString &which) const;
    // Waits until the queue is empty and returns the PDFs written so far.
    QStringList waitForPdfs(int timeoutMs = 60000) const;

private:
    QTemporaryDir m_folder;
    QString m_outputFolder;
    QString m_problem;
    bool m_running = false;
};

// Starts a test program's session in its initTestCase: skipped where this
// machine cannot run a private scheduler, failed where it should but did not.
#define LANTERN_START_CUPS_SESSION(session)                     \
    switch ((session).start()) {                                \
    case CupsSession::Start::NotPossibleHere:                   \
        QSKIP(qPrintable((session).problem()));                 \
    case CupsSession::Start::Failed:                            \
        QFAIL(qPrintable((session).problem()));                 \
    case CupsSession::Start::Started:                           \
        break;                                                  \
    }
