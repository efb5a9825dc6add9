#pragma once

#include "platform/ime/InputMethodFramework.h"

#include <QString>
#include <QStringList>

// The input method's own tools, each a program of its own: Mozc's settings,
// its word registration and its dictionary (mozc_tool), or the framework's
// settings where Mozc's tool is missing.
class InputMethodTool
{
public:
    // clang-format off
    enum Tool { Settings = 1, WordRegistration = 2, Dictionary = 3 };
    // clang-format on

    struct Command
    {
        QString program;
        QStringList arguments;
        // NAME=VALUE entries added to this program's environment.
        QStringList environment;
        bool isEmpty() const { return program.isEmpty(); }
    };

    // Where Mozc's tool is installed; empty without it.
    static QString mozcTool();
    // The command that opens a tool. Word registration opens pre-filled with
    // the word and its reading, which Mozc's tool takes from its environment
    // (so the user's clipboard is never touched); empty ones are left out.
    static Command command(Tool tool, InputMethodFramework::Kind framework, const QString &word = QString(),
                           const QString &reading = QString());
    // Starts it detached; false when it could not start.
    static bool start(const Command &command);
};
