#pragma once

#include "app/Registry.h"

#include <QStringList>

// The user's private-character font and the backup of it kept while the
// program's font is linked: "SystemDefaultEUDCFont" and
// "~SystemDefaultEUDCFont" of "EUDC\932", as the registry holds them now.
inline QStringList eudcValues()
{
    Registry registry;
    QString key = QStringLiteral("EUDC\\932");
    registry.Load(key);
    return {registry.Data("SystemDefaultEUDCFont").toString(), registry.Data("~SystemDefaultEUDCFont").toString()};
}
