#pragma once

#include "platform/keys/KeyStroke.h"

#include <QString>

// The shared key-sending routine: types a key string in the key-sending
// notation (see KeyNotation) into whatever has the keyboard focus, key by
// key, along the path a real keyboard takes. Each stroke is offered to the
// platform input context first, so that the input method composes from it
// exactly as from the keyboard; what the input method does not take is queued
// to the focus window like any key from the window system. The focus is never
// moved: a window that should not take it (the input pad) stays unfocused.
//
// A character that no key of the keyboard types (a full-width letter, a kana)
// goes the same way as a key event that carries the character as its text,
// with a Unicode keysym: the input method lets it through, and the focused
// widget inserts the text, in order with the keys sent before it. An open
// composition is committed first, so that the character follows it.
class KeySender
{
public:
    // Sends every stroke of the string; returns how many were sent (zero when
    // no window has the focus).
    static int send(const QString &keys);
    // Presses and releases one stroke.
    static bool send(const KeyStroke &stroke);
};
