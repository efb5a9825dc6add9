#pragma once

#include <QByteArray>
#include <QString>

class QTextCursor;
class QTextDocument;

// Writes a QTextDocument as RTF the way the Windows rich-text box writes it:
// code page 932 throughout (\ansicpg932, every text font \fcharset128, text
// outside ASCII as \'xx byte pairs), \uN with a "?" only for characters the
// code page cannot hold, \fs sizes, \b, \i, \ul, colours, \qc/\qr/\qj,
// indents and bullets in the rich-text box's \pn form.
class RtfWriter
{
public:
    static QByteArray write(const QTextDocument *document);
    // Only the selected part of the cursor's document.
    static QByteArray write(const QTextDocument *document, const QTextCursor &selection);
    // The same RTF as a string of Latin-1 characters, one for each byte.
    static QString writeString(const QTextDocument *document);

    // The font name used where the document names none.
    static QString fallbackFontName();
};
