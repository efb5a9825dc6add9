#pragma once

#include <QString>

// Links the program's private-character font (SKIN/USERFONT/EUDC.TTE beside the
// program) as the user's private-character font while the program runs, and
// gives the user's own font back afterwards. The user's font is kept in the
// backup value "~SystemDefaultEUDCFont" exactly while the link is on.
class PrivateCharacters
{
public:
    static constexpr const char *Key = "EUDC\\932";
    static constexpr const char *Current = "SystemDefaultEUDCFont";
    static constexpr const char *Backup = "~SystemDefaultEUDCFont";

    static void Link(bool on, const QString &programFolder);
    static void Link(bool on);

    static QString fontPath(const QString &programFolder);
};
