#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The desktop's own settings tools behind the system menu. Each entry lists
// the commands that can open it, best first; the first one installed starts.
class SystemTools
{
public:
    // System menu entries that open a tool.
    // clang-format off
    enum Tool { Volume = 0, Display = 1, Printers = 3, Fonts = 5, DateTime = 7, Internet = 9 };
    // clang-format on

    // The candidate command lines of a menu entry; empty for other entries.
    static QList<QStringList> commandsFor(int menuIndex);

    // Starts the first installed command of the entry, detached. A tool that
    // is missing or fails to start is ignored: false, nothing else.
    static bool open(int menuIndex);

    // The program that started last (for the log and for tests); empty when none.
    static QString lastStarted();
};
