#include "platform/vb/VbStrConv.h"

namespace {

bool isWordSeparator(QChar c)
{
    switch (c.unicode()) {
    // clang-format off
    case 0x00: case 0x09: case 0x0A: case 0x0B: case 0x0C: case 0x0D: case 0x20: case 0x3000:
        return true;
    // clang-format on
    default:
        return false;
    }
}

// The half-width katakana block U+FF61..U+FF9F and its full-width forms.
const QString &fullWidthKana()
{
    static const QString kana = QStringLiteral(
        "。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソ"
        "タチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン゛゜");
    return kana;
}

constexpr char16_t HalfWidthKanaFirst = 0xff61;
constexpr char16_t HalfVoicedMark = 0xff9e;
constexpr char16_t HalfSemiVoicedMark = 0xff9f;

bool isHalfWidthKana(char16_t c)
{
    return c >= HalfWidthKanaFirst && c <= HalfSemiVoicedMark;
}

} // namespace

QString VbStrConv::properCase(const QString &text)
{
    QString result;
    result.reserve(text.size());
    bool atWordStart = true;
    for (const QChar c : text) {
        if (isWordSeparator(c)) {
            result += c;
            atWordStart = true;
            continue;
        }
        result += atWordStart ? c.toUpper() : c.toLower();
        atWordStart = false;
    }
    return result;
}

QString VbStrConv::wide(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c == u' ') {
            result += QChar(0x3000);
        } else if (c > 0x20 && c < 0x7f) {
            result += QChar(char16_t(c - 0x21 + 0xff01));
        } else if (isHalfWidthKana(c)) {
            const QChar full = fullWidthKana().at(c - HalfWidthKanaFirst);
            // A base kana and the mark after it join where a voiced kana exists.
            if (i + 1 < text.size() && c != HalfVoicedMark && c != HalfSemiVoicedMark) {
                const char16_t next = text.at(i + 1).unicode();
                if (next == HalfVoicedMark || next == HalfSemiVoicedMark) {
                    const QChar combining(next == HalfVoicedMark ? 0x3099 : 0x309a);
                    const QString joined = (QString(full) + combining).normalized(QString::NormalizationForm_C);
                    if (joined.size() == 1) {
                        result += joined;
                        ++i;
                        continue;
                    }
                }
            }
            result += full;
        } else {
            result += QChar(c);
        }
    }
    return result;
}

QString VbStrConv::narrow(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == 0x3000) {
            result += u' ';
            continue;
        }
        if (c >= 0xff01 && c <= 0xff5e) {
            result += QChar(char16_t(c - 0xff01 + 0x21));
            continue;
        }
        const bool katakanaOrSign = (c >= 0x30a1 && c <= 0x30fc) || c == 0x309b || c == 0x309c
            || c == 0x3001 || c == 0x3002 || c == 0x300c || c == 0x300d;
        if (!katakanaOrSign) {
            result += ch;
            continue;
        }
        // "ガ" is "カ" and the voiced mark: narrow both.
        const QString parts = QString(ch).normalized(QString::NormalizationForm_D);
        const qsizetype base = fullWidthKana().indexOf(parts.at(0));
        if (base < 0) {
            result += ch; // ヮ, ヰ, ヱ, ヵ, ヶ have no half-width form
            continue;
        }
        result += QChar(char16_t(HalfWidthKanaFirst + base));
        for (const QChar mark : parts.mid(1))
            result += QChar(mark.unicode() == 0x3099 ? HalfVoicedMark : HalfSemiVoicedMark);
    }
    return result;
}

QString VbStrConv::hiragana(const QString &text)
{
    QString result = text;
    for (QChar &ch : result) {
        const char16_t c = ch.unicode();
        if ((c >= 0x30a1 && c <= 0x30f6) || c == 0x30fd || c == 0x30fe)
            ch = QChar(char16_t(c - 0x60));
    }
    return result;
}

QString VbStrConv::katakana(const QString &text)
{
    QString result = text;
    for (QChar &ch : result) {
        const char16_t c = ch.unicode();
        if ((c >= 0x3041 && c <= 0x3096) || c == 0x309d || c == 0x309e)
            ch = QChar(char16_t(c + 0x60));
    }
    return result;
}
