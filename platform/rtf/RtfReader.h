#pragma once

#include <QByteArray>
#include <QString>

class QTextCursor;
class QTextDocument;

// Reads RTF as the Windows rich-text box and WordPad write it into a
// QTextDocument: text in the fonts' code pages, \uN, paragraphs, font sizes,
// bold, italic, underline, colours, alignment, indents and bullets. Unknown
// control words and destinations are skipped; tables come in as paragraphs
// of tab-separated cells, pictures are left out.
//
// Input that is not RTF at all is put into the document as plain text (as the
// rich-text box does) and read() returns false. Damaged RTF (a missing
// closing brace, too deep nesting) is read as far as it goes, and read()
// returns false with the reason in error.
class RtfReader
{
public:
    static bool read(const QByteArray &rtf, QTextDocument *document, QString *error = nullptr);
    // RTF held in a QString: every character is one byte (they are all below
    // 256), unless the string holds characters beyond Latin-1: then it is RTF
    // whose raw bytes were read as code page 932, and they are encoded back.
    static bool read(const QString &rtf, QTextDocument *document, QString *error = nullptr);

    // Inserts the RTF at the cursor, replacing its selection (pasting).
    static bool readFragment(const QByteArray &rtf, QTextCursor *cursor, QString *error = nullptr);

    // True when the bytes start like an RTF document ("{\rtf").
    static bool looksLikeRtf(const QByteArray &bytes);
};
