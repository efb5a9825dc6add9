#pragma once

#include "platform/RuntimeLog.h"
#include "platform/vb/VbError.h"

#include <exception>
#include <utility>

// "On Error Resume Next" for one step: runs it, and when it fails notes the
// failure in the runtime log and lets the caller go on with the next step.
// Returns whether the step ran to its end.
class ErrorTrap
{
public:
    template<typename Step>
    static bool run(const char *where, Step &&step)
    {
        try {
            std::forward<Step>(step)();
            return true;
        } catch (const VbError &error) {
            RuntimeLog::note(where, QStringLiteral("error %1: %2").arg(error.number()).arg(error.description()));
        } catch (const std::exception &error) {
            RuntimeLog::note(where, QString::fromUtf8(error.what()));
        }
        return false;
    }
};
