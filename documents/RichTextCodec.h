#pragma once

#include <QByteArray>
#include <QString>

class QTextDocument;

// The one place where a box's contents turn into the rich text the document
// record holds, and back.
class RichTextCodec
{
public:
    // The RTF source of a document, as the record keeps it.
    static QString write(const QTextDocument *document);
    // Replaces the document's contents with the RTF; text that is not RTF
    // comes in as plain text. False when the source was damaged.
    static bool read(const QString &rtf, QTextDocument *document);
    static bool read(const QByteArray &rtf, QTextDocument *document);
};
