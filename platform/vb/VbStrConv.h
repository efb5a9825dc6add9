#pragma once

#include <QString>

// The runtime's StrConv conversions that the program uses.
class VbStrConv
{
public:
    // The first letter of every word upper-case, the rest lower-case. Words
    // are separated by NUL, tab, line feed, vertical tab, form feed, carriage
    // return and the blank (half- or full-width), as in the runtime.
    static QString properCase(const QString &text);

    // vbWide: half-width letters, digits, signs, blank and katakana become
    // full-width ("ｶﾞ" joins into "ガ").
    static QString wide(const QString &text);
    // vbNarrow: the reverse; full-width katakana split into base and mark
    // ("ガ" gives "ｶﾞ"). Hiragana and characters without a half-width form stay.
    static QString narrow(const QString &text);
    // vbHiragana: full-width katakana become hiragana.
    static QString hiragana(const QString &text);
    // vbKatakana: hiragana become full-width katakana.
    static QString katakana(const QString &text);
};
