#include "documents/RichTextCodec.h"

#include "platform/RuntimeLog.h"
#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"

QString RichTextCodec::write(const QTextDocument *document)
{
    return RtfWriter::writeString(document);
}

bool RichTextCodec::read(const QString &rtf, QTextDocument *document)
{
    QString error;
    const bool ok = RtfReader::read(rtf, document, &error);
    if (!ok && !error.isEmpty())
        RuntimeLog::note("RichTextCodec::read", error);
    return ok;
}

bool RichTextCodec::read(const QByteArray &rtf, QTextDocument *document)
{
    QString error;
    const bool ok = RtfReader::read(rtf, document, &error);
    if (!ok && !error.isEmpty())
        RuntimeLog::note("RichTextCodec::read", error);
    return ok;
}
