#pragma once

#include <QString>
#include <memory>

// Switches the computer off or ends the user's session. The program's own
// rules decide when; this only carries the decision out.
class PowerControl
{
public:
    virtual ~PowerControl() = default;

    // Power off now.
    virtual void powerOff() = 0;
    // Power off after a delay, closing programs by force.
    virtual void powerOffForcedAfter(int seconds) = 0;
    // End the user's session (log off).
    virtual void logOff() = 0;

    // The control the program uses: logind on the system bus, unless the
    // environment names a recording file (LANTERN_POWER_CONTROL=record:PATH),
    // which every test does, so that no test can ever switch a machine off.
    static std::unique_ptr<PowerControl> create();
};
