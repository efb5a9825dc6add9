#include "platform/rtf/RtfCodePage.h"

#include "platform/CodePage932.h"

#include <unicode/ucnv.h>
#include <unicode/uset.h>

#include <map>
#include <memory>
#include <vector>

namespace {

struct ConverterCloser
{
    void operator()(UConverter *converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

QByteArray icuName(int codePage)
{
    switch (codePage) {
    case 437:
    case 850:
    case 866:
        return "ibm-" + QByteArray::number(codePage);
    case 10000:
        return "macintosh";
    case 1361:
        return "ibm-1361";
    default:
        return "windows-" + QByteArray::number(codePage);
    }
}

// Converters stay open for the thread's life: documents switch code pages
// with every font change.
UConverter *converterFor(int codePage)
{
    thread_local std::map<int, Converter> converters;
    auto found = converters.find(codePage);
    if (found != converters.end())
        return found->second.get();

    UErrorCode status = U_ZERO_ERROR;
    Converter made(ucnv_open(icuName(codePage).constData(), &status));
    if (U_FAILURE(status) || !made) {
        status = U_ZERO_ERROR;
        made.reset(ucnv_open("windows-1252", &status));
    }
    UConverter *converter = made.get();
    converters.emplace(codePage, std::move(made));
    return converter;
}

// Byte sequences of every character code page 932 holds both ways, built once.
std::vector<quint16> build932Table()
{
    std::vector<quint16> table(0x10000, 0);
    for (int unit = 0; unit < 0x80; ++unit)
        table[unit] = static_cast<quint16>(unit);

    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open("windows-31j", &status));
    if (U_FAILURE(status) || !converter) {
        status = U_ZERO_ERROR;
        converter.reset(ucnv_open("ibm-943_P15A-2003", &status));
    }
    if (U_FAILURE(status) || !converter)
        return table;

    USet *set = uset_openEmpty();
    ucnv_getUnicodeSet(converter.get(), set, UCNV_ROUNDTRIP_SET, &status);
    const int32_t ranges = U_SUCCESS(status) ? uset_getItemCount(set) : 0;
    for (int32_t item = 0; item < ranges; ++item) {
        UChar32 first = 0;
        UChar32 last = 0;
        UErrorCode itemStatus = U_ZERO_ERROR;
        if (uset_getItem(set, item, &first, &last, nullptr, 0, &itemStatus) != 0)
            continue; // a string, not a range
        for (UChar32 cp = qMax<UChar32>(first, 0x80); cp <= last && cp < 0x10000; ++cp) {
            if (cp >= 0xD800 && cp <= 0xDFFF)
                continue;
            const UChar unit = static_cast<UChar>(cp);
            char bytes[4];
            UErrorCode one = U_ZERO_ERROR;
            ucnv_reset(converter.get());
            const int32_t length = ucnv_fromUChars(converter.get(), bytes, sizeof bytes, &unit, 1, &one);
            if (U_FAILURE(one))
                continue;
            if (length == 1)
                table[cp] = static_cast<unsigned char>(bytes[0]);
            else if (length == 2)
                table[cp] = static_cast<quint16>(static_cast<unsigned char>(bytes[0]) << 8
                                                 | static_cast<unsigned char>(bytes[1]));
        }
    }
    uset_close(set);
    return table;
}

} // namespace

int RtfCodePage::forCharset(int charset)
{
    switch (charset) {
    // clang-format off
    case 0: return 1252;   // ANSI
    case 2: return 1252;   // Symbol: its bytes are read as they stand
    case 77: return 10000; // Mac Roman
    case 128: return 932;  // Shift-JIS
    case 129: return 949;  // Hangul
    case 130: return 1361; // Johab
    case 134: return 936;  // GB2312
    case 136: return 950;  // Big5
    case 161: return 1253; // Greek
    case 162: return 1254; // Turkish
    case 163: return 1258; // Vietnamese
    case 177: return 1255; // Hebrew
    case 178: return 1256; // Arabic
    case 186: return 1257; // Baltic
    case 204: return 1251; // Cyrillic
    case 222: return 874;  // Thai
    case 238: return 1250; // Eastern European
    case 255: return 437;  // OEM
    default: return 0;     // 1 (default charset) and unknown ones
    }
    // clang-format on
}

QString RtfCodePage::decode(int codePage, QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return QString();
    if (codePage == 932)
        return CodePage932::decode(bytes);

    UConverter *converter = converterFor(codePage);
    if (!converter)
        return QString::fromLatin1(bytes.data(), bytes.size());
    ucnv_reset(converter);
    QString out(bytes.size() + 1, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t written = ucnv_toUChars(converter, reinterpret_cast<UChar *>(out.data()), out.size(),
                                          bytes.data(), bytes.size(), &status);
    if (U_FAILURE(status))
        return QString::fromLatin1(bytes.data(), bytes.size());
    out.truncate(written);
    return out;
}

quint16 RtfCodePage::encode932(char16_t unit)
{
    static const std::vector<quint16> table = build932Table();
    return table[unit];
}
