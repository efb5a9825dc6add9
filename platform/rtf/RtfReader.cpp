#include "platform/rtf/RtfReader.h"

#include "platform/CodePage932.h"
#include "platform/RuntimeLog.h"
#include "platform/rtf/RtfParser.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <algorithm>

namespace {

QString plainTextOf(const QByteArray &bytes)
{
    QString text = CodePage932::decode(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    text.removeIf([](QChar c) { return c != u'\n' && !RtfParser::isStorable(c.unicode()); });
    return text;
}

bool parseInto(const QByteArray &rtf, QTextCursor cursor, QString *error)
{
    if (!RtfReader::looksLikeRtf(rtf)) {
        cursor.insertText(plainTextOf(rtf));
        if (error)
            *error = QStringLiteral("the text is not RTF");
        return false;
    }
    RtfParser parser(rtf, cursor);
    return parser.parse(error);
}

} // namespace

bool RtfReader::looksLikeRtf(const QByteArray &bytes)
{
    qsizetype start = 0;
    while (start < bytes.size() && (bytes[start] == ' ' || bytes[start] == '\r' || bytes[start] == '\n' || bytes[start] == '\t'))
        ++start;
    const QByteArrayView rest = QByteArrayView(bytes).sliced(start);
    return rest.startsWith("{\\rtf") || rest.startsWith("{\\urtf");
}

bool RtfReader::read(const QByteArray &rtf, QTextDocument *document, QString *error)
{
    if (!document)
        return false;
    const bool undo = document->isUndoRedoEnabled();
    document->setUndoRedoEnabled(false);
    // One edit for the whole text: a box showing the document lays it out
    // once, lazily from the top, instead of again after every insertion.
    QTextCursor edit(document);
    edit.beginEditBlock();
    document->clear();
    QString problem;
    const bool ok = parseInto(rtf, QTextCursor(document), &problem);
    edit.endEditBlock();
    document->setUndoRedoEnabled(undo);
    if (!ok)
        RuntimeLog::note("RtfReader", problem);
    if (error)
        *error = problem;
    return ok;
}

bool RtfReader::read(const QString &rtf, QTextDocument *document, QString *error)
{
    // Characters beyond Latin-1 mean the RTF's raw bytes were decoded as code
    // page 932 on the way in: encoding them again gives the bytes back.
    const bool bytewise = std::all_of(rtf.cbegin(), rtf.cend(), [](QChar c) { return c.unicode() < 0x100; });
    return read(bytewise ? rtf.toLatin1() : CodePage932::encode(rtf), document, error);
}

bool RtfReader::readFragment(const QByteArray &rtf, QTextCursor *cursor, QString *error)
{
    if (!cursor || cursor->isNull())
        return false;
    QTextDocument scratch;
    const bool ok = read(rtf, &scratch, error);
    cursor->insertFragment(QTextDocumentFragment(&scratch));
    return ok;
}
