#include "platform/PowerControl.h"
#include "platform/LogindPowerControl.h"
#include "platform/RecordingPowerControl.h"

std::unique_ptr<PowerControl> PowerControl::create()
{
    const QString choice = qEnvironmentVariable("LANTERN_POWER_CONTROL");
    if (choice.startsWith(u"record:"))
        return std::make_unique<RecordingPowerControl>(choice.mid(7));
    return std::make_unique<LogindPowerControl>();
}
