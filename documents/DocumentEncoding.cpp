#include "documents/DocumentEncoding.h"

#include "platform/CodePage932.h"
#include "platform/RuntimeLog.h"

#include <QRegularExpression>

namespace {

// The whole text in one go: most texts survive, and then nothing else is done.
bool survivesWhole(const QString &text, QByteArray *bytes)
{
    *bytes = CodePage932::encode(text);
    return CodePage932::decode(*bytes) == text;
}

// Calls step(codePoint, units) for each character of text.
template<typename Step>
void forEachCharacter(const QString &text, Step step)
{
    for (qsizetype i = 0; i < text.size();) {
        qsizetype length = 1;
        char32_t cp = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            cp = QChar::surrogateToUcs4(text[i], text[i + 1]);
            length = 2;
        }
        step(cp, QStringView(text).sliced(i, length));
        i += length;
    }
}

} // namespace

bool DocumentEncoding::survives(char32_t codePoint)
{
    if (codePoint < 0x80)
        return true;
    if (!CodePage932::canEncode(codePoint))
        return false;
    const QString character = QString::fromUcs4(&codePoint, 1);
    return CodePage932::decode(CodePage932::encode(character)) == character;
}

QByteArray DocumentEncoding::encodeTitle(const QString &title)
{
    QByteArray bytes;
    if (survivesWhole(title, &bytes))
        return bytes;

    QString kept;
    forEachCharacter(title, [&](char32_t cp, QStringView units) {
        if (survives(cp))
            kept += units;
        else
            kept += QStringLiteral("&#%1;").arg(quint32(cp));
    });
    return CodePage932::encode(kept);
}

QString DocumentEncoding::decodeTitle(QByteArrayView bytes)
{
    QString title = CodePage932::decode(bytes);
    if (!title.contains(u"&#"))
        return title;

    static const QRegularExpression reference(QStringLiteral("&#(\\d{1,7});"));
    QString result;
    qsizetype last = 0;
    for (const QRegularExpressionMatch &match : reference.globalMatch(title)) {
        const char32_t cp = match.captured(1).toUInt();
        if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF) || survives(cp))
            continue;
        result += QStringView(title).sliced(last, match.capturedStart() - last);
        result += QString::fromUcs4(&cp, 1);
        last = match.capturedEnd();
    }
    result += QStringView(title).sliced(last);
    return result;
}

QByteArray DocumentEncoding::encodeBody(const QString &body)
{
    QByteArray bytes;
    if (survivesWhole(body, &bytes))
        return bytes;

    if (!body.startsWith(u"{\\rtf")) {
        RuntimeLog::note("DocumentEncoding", QStringLiteral("characters of a plain-text body became \"?\""));
        return bytes;
    }

    // One group per run of escaped characters, so that its \uc1 holds whatever
    // skip count the surrounding text set.
    QString kept;
    bool inRun = false;
    forEachCharacter(body, [&](char32_t cp, QStringView units) {
        if (survives(cp)) {
            if (inRun)
                kept += u'}';
            inRun = false;
            kept += units;
            return;
        }
        if (!inRun)
            kept += QStringLiteral("{\\uc1");
        inRun = true;
        for (QChar unit : units)
            kept += QStringLiteral("\\u%1?").arg(qint16(unit.unicode()));
    });
    if (inRun)
        kept += u'}';
    return CodePage932::encode(kept);
}
