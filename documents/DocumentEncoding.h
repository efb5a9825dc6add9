#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// Turns a document's title and body into code page 932 bytes and back without
// silently losing a character the code page cannot hold (an emoji, a rare
// kanji, a character that would only come back as a look-alike):
// - in the title it is written as the reference "&#N;" (N the decimal code
//   point), and such a reference is turned back into its character on reading
//   only when the code page could not have held that character, so every other
//   text, "&#65;" included, reads back as it was written;
// - in a rich-text body it is written as RTF's own "\uN?" escape, which any RTF
//   reader understands; a body that is not rich text keeps "?" in its place,
//   and the loss is noted in the runtime log.
class DocumentEncoding
{
public:
    static QByteArray encodeTitle(const QString &title);
    static QString decodeTitle(QByteArrayView bytes);

    static QByteArray encodeBody(const QString &body);

    // Whether the code page holds the character and gives it back unchanged.
    static bool survives(char32_t codePoint);
};
