#pragma once

#include <QByteArrayView>
#include <QString>

// The code pages that RTF text bytes come in. Japanese (932) goes through
// CodePage932; the others through ICU's converters of the same Windows names.
class RtfCodePage
{
public:
    // The code page of a font's \fcharset, or 0 when the charset does not
    // name one (the document's \ansicpg applies then).
    static int forCharset(int charset);

    // Bytes in the given code page as text; bytes that are not valid there
    // become U+FFFD. Unknown code pages read as Windows-1252.
    static QString decode(int codePage, QByteArrayView bytes);

    // The code page 932 bytes of one UTF-16 unit: 0 when the code page cannot
    // hold it, a single byte below 0x100, otherwise lead byte << 8 | trail byte.
    // A table lookup, so that writing long texts stays fast.
    static quint16 encode932(char16_t unit);
};
