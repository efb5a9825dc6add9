#include "platform/CodePage932.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <memory>

namespace {

struct ConverterCloser
{
    void operator()(UConverter *converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// One converter per thread: ICU converters keep state between calls.
UConverter *converter()
{
    thread_local Converter instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        Converter made(ucnv_open("windows-31j", &status));
        if (U_FAILURE(status)) {
            status = U_ZERO_ERROR;
            made.reset(ucnv_open("ibm-943_P15A-2003", &status));
        }
        // "?" stands for a character the code page lacks. Set once here,
        // because setting it also changes what a bad byte reads as (U+FFFD
        // instead of the control code 0x1A): the same bytes must always give
        // the same text, whatever was written before.
        if (made) {
            status = U_ZERO_ERROR;
            ucnv_setSubstChars(made.get(), "?", 1, &status);
        }
        return made;
    }();
    return instance.get();
}

bool isTrailByte(unsigned char byte)
{
    return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

} // namespace

QByteArray CodePage932::encodeWithIcu(QStringView text, bool *ok)
{
    if (ok)
        *ok = true;
    UConverter *cnv = converter();
    if (!cnv || text.isEmpty())
        return text.isEmpty() ? QByteArray() : text.toLatin1();

    ucnv_reset(cnv);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(cnv, UCNV_FROM_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr, &status);

    // Each UTF-16 unit gives at most two bytes.
    QByteArray out(text.size() * 2 + 4, Qt::Uninitialized);
    status = U_ZERO_ERROR;
    const int32_t written = ucnv_fromUChars(cnv, out.data(), out.size(),
                                            reinterpret_cast<const UChar *>(text.utf16()), text.size(), &status);
    if (U_FAILURE(status)) {
        if (ok)
            *ok = false;
        return QByteArray();
    }
    out.truncate(written);

    if (ok) {
        // ICU substitutes silently, so check the characters that became "?".
        for (qsizetype i = 0; i < text.size(); ++i) {
            char32_t cp = text[i].unicode();
            if (QChar::isHighSurrogate(cp) && i + 1 < text.size()) {
                cp = QChar::surrogateToUcs4(text[i], text[i + 1]);
                ++i;
            }
            if (cp != u'?' && !canEncode(cp)) {
                *ok = false;
                break;
            }
        }
    }
    return out;
}

QString CodePage932::decodeWithIcu(QByteArrayView bytes)
{
    UConverter *cnv = converter();
    if (!cnv)
        return QString::fromLatin1(bytes.data(), bytes.size());
    if (bytes.isEmpty())
        return QString();

    ucnv_reset(cnv);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(cnv, UCNV_TO_U_CALLBACK_SUBSTITUTE, nullptr, nullptr, nullptr, &status);
    QString out(bytes.size() + 1, Qt::Uninitialized);
    status = U_ZERO_ERROR;
    const int32_t written = ucnv_toUChars(cnv, reinterpret_cast<UChar *>(out.data()), out.size(),
                                          bytes.data(), bytes.size(), &status);
    if (U_FAILURE(status))
        return QString();
    out.truncate(written);
    return out;
}

// Code page 932 keeps the 128 ASCII codes as they are, control codes
// included, where ICU's table trades 0x1A, 0x1C and 0x7F among themselves as
// IBM's code pages do. ASCII runs are therefore copied and only the rest goes
// through ICU; most text the program converts (paths, names, settings) is
// ASCII alone, and never opens a converter at all.
QByteArray CodePage932::encode(QStringView text, bool *ok)
{
    if (ok)
        *ok = true;
    QByteArray out;
    out.reserve(text.size() * 2);
    qsizetype at = 0;
    while (at < text.size()) {
        qsizetype end = at;
        while (end < text.size() && text[end].unicode() < 0x80)
            ++end;
        out += text.sliced(at, end - at).toLatin1();
        at = end;
        while (end < text.size() && text[end].unicode() >= 0x80)
            ++end;
        if (end > at) {
            bool partOk = true;
            out += encodeWithIcu(text.sliced(at, end - at), &partOk);
            if (ok && !partOk)
                *ok = false;
            at = end;
        }
    }
    return out;
}

QString CodePage932::decode(QByteArrayView bytes)
{
    QString out;
    out.reserve(bytes.size());
    qsizetype at = 0;
    while (at < bytes.size()) {
        qsizetype end = at;
        while (end < bytes.size() && static_cast<unsigned char>(bytes[end]) < 0x80)
            ++end;
        out += QLatin1StringView(bytes.data() + at, end - at);
        at = end;
        // A run of non-ASCII characters: a lead byte takes its trail byte
        // with it, even one that looks like ASCII.
        while (end < bytes.size() && static_cast<unsigned char>(bytes[end]) >= 0x80) {
            const bool pair = isLeadByte(static_cast<unsigned char>(bytes[end])) && end + 1 < bytes.size()
                && isTrailByte(static_cast<unsigned char>(bytes[end + 1]));
            end += pair ? 2 : 1;
        }
        if (end > at) {
            out += decodeWithIcu(bytes.sliced(at, end - at));
            at = end;
        }
    }
    return out;
}

bool CodePage932::canEncode(char32_t codePoint)
{
    UConverter *cnv = converter();
    if (!cnv)
        return codePoint < 0x80;
    if (codePoint < 0x80)
        return true;
    UChar units[2];
    int32_t length = 0;
    if (codePoint > 0xFFFF) {
        units[0] = static_cast<UChar>(0xD7C0 + (codePoint >> 10));
        units[1] = static_cast<UChar>(0xDC00 | (codePoint & 0x3FF));
        length = 2;
    } else {
        units[0] = static_cast<UChar>(codePoint);
        length = 1;
    }
    ucnv_reset(cnv);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(cnv, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    char buffer[8];
    status = U_ZERO_ERROR;
    ucnv_fromUChars(cnv, buffer, sizeof buffer, units, length, &status);
    const bool encodable = U_SUCCESS(status);
    ucnv_reset(cnv);
    return encodable;
}

bool CodePage932::isLeadByte(unsigned char byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}
