#pragma once

#include <QByteArray>
#include <QByteArrayView>

// Splits RTF bytes into groups, control words, control symbols, \'xx bytes
// and runs of plain text. Line ends and other control bytes in the text are
// not part of the content and never come out. One pass, no look-back.
class RtfTokenizer
{
public:
    // clang-format off
    enum class Kind { End, GroupStart, GroupEnd, ControlWord, ControlSymbol, HexByte, Text };
    // clang-format on

    struct Token
    {
        Kind kind = Kind::End;
        QByteArrayView word;       // ControlWord: the letters; Text: the bytes
        bool hasParameter = false; // ControlWord
        int parameter = 0;         // ControlWord, clamped to the int range
        char symbol = 0;           // ControlSymbol; '\n' for a backslash before a line end
        unsigned char byte = 0;    // HexByte
    };

    explicit RtfTokenizer(QByteArrayView data);

    Token next();
    // Raw text in a double-byte code page (932, 936, 949, 950): a lead byte
    // takes the next byte with it, even a brace or a backslash.
    void setDoubleByteCodePage(int codePage);
    // Passes over the data of \binN without reading it.
    void skipBytes(qint64 count);
    qsizetype position() const { return m_position; }

private:
    // Reads what follows a backslash; false when it yields no token.
    bool readControl(Token &token);

    bool isLeadByte(unsigned char byte) const;

    QByteArrayView m_data;
    qsizetype m_position = 0;
    int m_doubleByteCodePage = 0;
};
