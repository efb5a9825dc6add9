#pragma once

#include <QString>

// The help book's viewer, a program of its own (Qt Assistant) that keeps
// running after this program ends. A second request brings the running viewer
// to the front instead of starting another one.
class HelpViewer
{
public:
    // Shows the book "LANTERN.qhc" of the program folder. Failures are ignored.
    static void show(const QString &programFolder);
    // The process id of the viewer this process started, 0 when none.
    static qint64 taskNumber();

private:
    static bool isRunning(qint64 pid);
    static void bringToFront(qint64 pid);
    static qint64 s_taskNumber;
};
