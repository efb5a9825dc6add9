#pragma once

#include "platform/vb/VbError.h"

// The failures the character engine reports to its caller, as runtime errors
// in the object-defined range, so that a resume-next caller can note them.
namespace AgentError {

inline VbError characterFile(const QString &path, const QString &why)
{
    return VbError(VbError::ObjectErrorBase + 0x2801,
                   QStringLiteral("The character file %1 cannot be read: %2").arg(path, why));
}

inline VbError notLoaded(const QString &id)
{
    return VbError(VbError::ObjectErrorBase + 0x2802, QStringLiteral("No character is loaded as \"%1\"").arg(id));
}

inline VbError alreadyLoaded(const QString &id)
{
    return VbError(VbError::ObjectErrorBase + 0x2803, QStringLiteral("A character is already loaded as \"%1\"").arg(id));
}

inline VbError notConnected()
{
    return VbError(VbError::ObjectErrorBase + 0x2804, QStringLiteral("The character control is not connected"));
}

inline VbError animationNotFound(const QString &name)
{
    return VbError(VbError::ObjectErrorBase + 0x2805, QStringLiteral("The character has no animation or state \"%1\"").arg(name));
}

inline VbError voiceNotInstalled(const QString &modeId)
{
    return VbError(VbError::ObjectErrorBase + 0x2806, QStringLiteral("The voice %1 is not installed").arg(modeId));
}

} // namespace AgentError
