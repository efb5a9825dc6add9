#include "documents/RichTextCleanup.h"

namespace {

const QString colourTable = QStringLiteral("\\colortbl");

// Cuts every group holding the colour table word; a word without a brace on
// both sides is left where it is.
bool cutColourTables(QString &text)
{
    bool cut = false;
    qsizetype from = 0;
    while (true) {
        const qsizetype word = text.indexOf(colourTable, from);
        if (word < 0)
            break;
        const qsizetype start = text.lastIndexOf(QLatin1Char('{'), word);
        const qsizetype end = text.indexOf(QLatin1Char('}'), word + colourTable.size());
        if (start < 0 || end < 0) {
            from = word + colourTable.size();
            continue;
        }
        text.remove(start, end - start + 1);
        from = start;
        cut = true;
    }
    return cut;
}

bool removeAll(QString &text, const QString &word)
{
    const qsizetype before = text.size();
    text.remove(word);
    return text.size() != before;
}

} // namespace

QString RichTextCleanup::clean(const QString &rtf, bool *removed)
{
    QString text = rtf;
    bool any = cutColourTables(text);
    any |= removeAll(text, QStringLiteral("\\ulnone"));
    any |= removeAll(text, QStringLiteral("\\ul"));
    if (removed)
        *removed = any;
    return text;
}
