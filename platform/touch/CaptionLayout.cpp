#include "platform/touch/CaptionLayout.h"

#include "platform/touch/TouchTheme.h"

#include <QFontMetrics>
#include <QHash>

namespace {

// A line may end after these...
bool endsPiece(QChar c)
{
    return c.isSpace() || QStringView(u"、。，．！？」』）】〉》,.!?)]").contains(c);
}

// ...and before these.
bool startsPiece(QChar c)
{
    return QStringView(u"「『（【〈《([").contains(c);
}

bool isKanjiOrKatakana(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 0x4E00 && u <= 0x9FFF) || (u >= 0x30A0 && u <= 0x30FF) || u == 0x3005;
}

// A particle between two words written in kanji or katakana ends a phrase:
// "タイトルを" + "入力してください", "日付を" + "入れる"; so does "して"
// before one: "保存して" + "閉じる".
bool endsPhrase(QStringView line, qsizetype i)
{
    if (i <= 0 || i + 1 >= line.size() || !isKanjiOrKatakana(line.at(i + 1)))
        return false;
    if (line.at(i) == u'て' && line.at(i - 1) == u'し')
        return true;
    return QStringView(u"をはがにでとのもへ").contains(line.at(i)) && isKanjiOrKatakana(line.at(i - 1));
}

int widest(const QStringList &lines, const QFontMetrics &metrics)
{
    int width = 0;
    for (const QString &line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    return width;
}

} // namespace

QStringList CaptionLayout::pieces(const QString &line)
{
    QStringList found;
    QString piece;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (startsPiece(c) && !piece.trimmed().isEmpty()) {
            found.append(piece);
            piece.clear();
        }
        piece += c;
        // Spaces stay with the piece they follow; a run of them ends it once.
        const bool nextIsSpace = i + 1 < line.size() && line.at(i + 1).isSpace();
        if ((endsPiece(c) && !nextIsSpace) || endsPhrase(line, i)) {
            found.append(piece);
            piece.clear();
        }
    }
    if (!piece.isEmpty())
        found.append(piece);
    return found;
}

QStringList CaptionLayout::lines(const QString &caption, const QFontMetrics &metrics, int width)
{
    QStringList result;
    for (const QString &paragraph : caption.split(u'\n')) {
        QString current;
        for (const QString &piece : pieces(paragraph)) {
            const QString joined = current + piece;
            if (current.isEmpty() || metrics.horizontalAdvance(joined.trimmed()) <= width) {
                current = joined;
                continue;
            }
            result.append(current.trimmed());
            current = piece;
        }
        if (metrics.horizontalAdvance(current.trimmed()) > width)
            return {};
        result.append(current.trimmed());
    }
    // A piece that began a line may itself be too wide.
    return widest(result, metrics) <= width ? result : QStringList();
}

CaptionLayout::Fitted CaptionLayout::fit(const QFont &font, const QString &caption, const QSize &box, bool wrap)
{
    Fitted fitted{font, caption};
    if (caption.isEmpty() || box.isEmpty())
        return fitted;

    // Every repaint asks again, and each size tried costs a text layout:
    // answers are kept.
    static QHash<QString, Fitted> known;
    const QString key = QStringLiteral("%1|%2|%3x%4|%5").arg(font.key(), caption).arg(box.width()).arg(box.height()).arg(wrap);
    const auto found = known.constFind(key);
    if (found != known.cend())
        return found.value();
    if (known.size() > 512)
        known.clear();

    for (int size = TouchTheme::pixelSize(font); size >= TouchTheme::smallestPixelSize(); --size) {
        fitted.font.setPixelSize(size);
        const QFontMetrics metrics(fitted.font);
        const QStringList shown = wrap ? lines(caption, metrics, box.width()) : caption.split(u'\n');
        if (shown.isEmpty() || widest(shown, metrics) > box.width())
            continue;
        fitted.text = shown.join(u'\n');
        if (shown.size() * metrics.lineSpacing() <= box.height() + metrics.leading())
            break;
    }
    known.insert(key, fitted);
    return fitted;
}
