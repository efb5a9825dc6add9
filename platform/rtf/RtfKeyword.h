#pragma once

#include <QByteArrayView>

// The control words the RTF reader acts on. Words not listed here are
// skipped, and so are the destinations they open when a \* comes first.
struct RtfKeyword
{
    enum Word {
        // clang-format off
        Rtf, Ansi, Mac, Pc, Pca, AnsiCodePage, DefaultFont,
        FontTable, ColorTable, ListLevel, SkipDestination,
        Font, Charset, CodePage, Red, Green, Blue,
        Plain, FontSize, Bold, Italic, Underline, UnderlineNone, Color,
        Pard, Left, Center, Right, Justify, LeftIndent, FirstIndent, ListOverride,
        ListBullet, ListBody, ListContinue, ListText, ListFontSize,
        Par, Cell, Row, Unicode, UnicodeSkip, Binary,
        Character, // a word that stands for one character
    };
    // clang-format on

    Word word;
    char32_t character = 0; // for Character: the one it stands for

    // The keyword of a control word's letters, or null for one the reader ignores.
    static const RtfKeyword *find(QByteArrayView name);
};
