#include "platform/rtf/RtfTokenizer.h"

#include <limits>

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Bytes below a space carry no content in RTF, except the tab.
bool isIgnorable(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && c != '\t';
}

} // namespace

RtfTokenizer::RtfTokenizer(QByteArrayView data)
    : m_data(data)
{
}

RtfTokenizer::Token RtfTokenizer::next()
{
    const qsizetype size = m_data.size();
    Token token;
    for (;;) {
        while (m_position < size && isIgnorable(m_data[m_position]))
            ++m_position;
        if (m_position >= size)
            return token;
        if (m_data[m_position] != '\\')
            break;
        if (readControl(token))
            return token;
    }

    const char c = m_data[m_position];
    if (c == '{') {
        ++m_position;
        token.kind = Kind::GroupStart;
        return token;
    }
    if (c == '}') {
        ++m_position;
        token.kind = Kind::GroupEnd;
        return token;
    }
    const qsizetype start = m_position;
    while (m_position < size) {
        const char t = m_data[m_position];
        if (m_doubleByteCodePage != 0 && isLeadByte(static_cast<unsigned char>(t)) && m_position + 1 < size
            && static_cast<unsigned char>(m_data[m_position + 1]) >= 0x40) {
            m_position += 2;
            continue;
        }
        if (t == '{' || t == '}' || t == '\\' || isIgnorable(t))
            break;
        ++m_position;
    }
    token.kind = Kind::Text;
    token.word = m_data.sliced(start, m_position - start);
    return token;
}

bool RtfTokenizer::readControl(Token &token)
{
    const qsizetype size = m_data.size();
    ++m_position; // the backslash
    if (m_position >= size)
        return true; // a lone backslash at the very end: the end

    const char c = m_data[m_position];
    if (!isLetter(c)) {
        ++m_position;
        if (c == '\'') {
            // Up to two hex digits; a broken escape yields nothing.
            int value = 0;
            int digits = 0;
            while (digits < 2 && m_position < size) {
                const int digit = hexValue(m_data[m_position]);
                if (digit < 0)
                    break;
                value = value * 16 + digit;
                ++digits;
                ++m_position;
            }
            if (digits == 0)
                return false;
            token.kind = Kind::HexByte;
            token.byte = static_cast<unsigned char>(value);
            return true;
        }
        token.kind = Kind::ControlSymbol;
        token.symbol = (c == '\r' || c == '\n') ? '\n' : c;
        return true;
    }

    const qsizetype start = m_position;
    while (m_position < size && isLetter(m_data[m_position]))
        ++m_position;
    token.kind = Kind::ControlWord;
    token.word = m_data.sliced(start, m_position - start);

    bool negative = false;
    if (m_position < size && m_data[m_position] == '-'
        && m_position + 1 < size && isDigit(m_data[m_position + 1])) {
        negative = true;
        ++m_position;
    }
    if (m_position < size && isDigit(m_data[m_position])) {
        // Numbers beyond the int range are clamped; all their digits are read.
        constexpr qint64 limit = std::numeric_limits<int>::max();
        qint64 value = 0;
        while (m_position < size && isDigit(m_data[m_position])) {
            if (value <= limit)
                value = value * 10 + (m_data[m_position] - '0');
            ++m_position;
        }
        value = qMin(value, limit);
        token.hasParameter = true;
        token.parameter = static_cast<int>(negative ? -value : value);
    }
    if (m_position < size && m_data[m_position] == ' ')
        ++m_position; // the delimiting space belongs to the word
    return true;
}

void RtfTokenizer::setDoubleByteCodePage(int codePage)
{
    const bool doubleByte = codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
    m_doubleByteCodePage = doubleByte ? codePage : 0;
}

bool RtfTokenizer::isLeadByte(unsigned char byte) const
{
    if (m_doubleByteCodePage == 932)
        return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    return byte >= 0x81 && byte <= 0xFE;
}

void RtfTokenizer::skipBytes(qint64 count)
{
    if (count <= 0)
        return;
    m_position += static_cast<qsizetype>(qMin<qint64>(count, m_data.size() - m_position));
}
