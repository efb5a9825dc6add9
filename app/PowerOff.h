#pragma once

#include <QString>

class PowerControl;

// The routine run at every quit: the start-up link follows the "Shutdown"
// option, and with the option on the computer is switched off by the rule for
// the running system's version.
class PowerOff
{
public:
    enum class Family { Consumer,
                        NT };

    enum class Action {
        None,
        ShutDown,              // the shut-down flag: power off
        LogOff,                // flag 0: end the session
        DelayedForcedShutdown, // "SHUTDOWN -s -t 10 -f"
        ImmediatePowerOff,     // "SHUTDOWN /P"
    };

    struct Version
    {
        Family family = Family::NT;
        int major = 0;
        int minor = 0;
    };

    // The decision table, kept row by row.
    static Action actionFor(const Version &version);

    // This system's version: Linux counts as the NT family, with the kernel's
    // major and minor numbers.
    static Version systemVersion();
    static Version parseKernelRelease(const QString &release);

    // Places or removes the start-up link, then powers off when the option is on.
    static void QuitRoutine(const bool &shutdownOnQuit, PowerControl &control, const Version &version);
    static void QuitRoutine(const bool &shutdownOnQuit);

    // The target of the link: the program itself.
    static QString programPath();
};
