#pragma once

#include "platform/PowerControl.h"

// Power control through systemd-logind on the system bus.
class LogindPowerControl : public PowerControl
{
public:
    void powerOff() override;
    void powerOffForcedAfter(int seconds) override;
    void logOff() override;
};
