#pragma once

#include <QLoggingCategory>
#include <QString>

Q_DECLARE_LOGGING_CATEGORY(lcRuntime)

// The runtime event log: failures that the program skips are noted here, never
// shown to the user. Messages go to stderr and, once started, to a per-user
// log file ($XDG_STATE_HOME/lantern/lantern.log).
class RuntimeLog
{
public:
    // Opens the log file and routes Qt's messages through it as well.
    static void start();
    static bool isActive();
    static QString filePath();

    // Notes one skipped failure: where it happened and what went wrong.
    static void note(const char *where, const QString &what);
};
