#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// Text in Windows code page 932: Microsoft's Shift-JIS with the NEC and IBM
// extensions (①, ㈱, Ⅰ). Plain "Shift_JIS" tables differ on ～ − ¢ £ ¬ ‖, so
// everything beyond ASCII goes through ICU's "windows-31j" table.
class CodePage932
{
public:
    // Characters the code page cannot hold become "?"; ok tells whether any did.
    static QByteArray encode(QStringView text, bool *ok = nullptr);
    // Bytes that are not valid code page 932 become U+FFFD; never fails.
    static QString decode(QByteArrayView bytes);

    static bool canEncode(char32_t codePoint);
    // A first byte of a double-byte character: 0x81-0x9F and 0xE0-0xFC.
    static bool isLeadByte(unsigned char byte);

private:
    static QByteArray encodeWithIcu(QStringView text, bool *ok);
    static QString decodeWithIcu(QByteArrayView bytes);
};
