#include "platform/BackgroundProcess.h"

#include <QProcess>

#include <sys/resource.h>

namespace BackgroundProcess {

void lowerPriority(QProcess *process)
{
    // Runs in the child between fork and exec: only async-signal-safe calls.
    process->setChildProcessModifier([] { setpriority(PRIO_PROCESS, 0, 19); });
}

} // namespace BackgroundProcess
