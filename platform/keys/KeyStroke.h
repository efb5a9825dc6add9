#pragma once

#include <QString>
#include <Qt>

// One key press as the keyboard would give it: Qt's key code, the X keysym
// and X keycode the input method reads, the held modifiers and the text the
// key types. A character that no key of the keyboard produces (a full-width
// letter, a kana) has a Unicode keysym (0x01000000 + code point) and keycode 0.
struct KeyStroke
{
    int key = 0;
    quint32 keysym = 0;
    quint32 keycode = 0;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text;

    // The X modifier state of the stroke (Shift 1, Control 4).
    quint32 nativeModifiers() const;

    bool operator==(const KeyStroke &other) const = default;
};
