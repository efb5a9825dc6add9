#pragma once

#include "platform/keys/KeyStroke.h"

#include <QList>
#include <QString>

// Reads the key-sending notation: plain characters type themselves, a key
// name in braces is that key ("{LEFT}", "{ENTER}", "{KANJI}"; "{LEFT 3}"
// presses it three times), a single character in braces is that character
// ("{+}", "{^}", "{~}", "{{}", "{}}", "{*}"), "~" is Enter, and "+" and "^"
// hold Shift and Ctrl for the next key ("^{LEFT}+^{RIGHT}").
// Unknown key names and unclosed braces are skipped and logged.
class KeyNotation
{
public:
    static QList<KeyStroke> parse(const QString &keys);

    // The stroke that types one character, with the modifiers held.
    static KeyStroke character(char32_t c, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // The stroke of a named key ("LEFT", "bs"); false when there is no such key.
    static bool namedKey(const QString &name, Qt::KeyboardModifiers modifiers, KeyStroke &stroke);
};
