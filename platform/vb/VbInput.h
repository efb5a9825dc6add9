#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QDateTime>

// The runtime's Input #, Line Input # and EOF over the bytes of a sequential
// file. Fields come back still in the file's code page; the delimiters (comma,
// double quote, "#", CR, LF) never occur inside a double-byte character of
// code page 932, so the bytes can be split before they are decoded.
//
// A read that fails throws VbError: 62 at the end of the data, 13 when a field
// is not a date. The field is consumed either way, as the runtime does.
class VbInput
{
public:
    explicit VbInput(QByteArrayView data);

    // Input # into a String. Leading blanks and line ends are skipped. A quoted
    // field ends at the next double quote (even one the writer meant as part of
    // the text); what follows it up to the next comma or line end is passed
    // over. An unquoted field runs to the next comma or line end, trailing
    // blanks dropped.
    QByteArray readString();

    // Input # into a Date: a "#...#" literal, or a plain or quoted field, in
    // the universal form "yyyy-mm-dd hh:mm:ss" (either part may stand alone;
    // "/" is taken for "-"). The zero date 1899-12-30 00:00:00 comes back as
    // an invalid QDateTime. Local time.
    QDateTime readDate();

    // Line Input #: up to CR or CR LF, the line end not included. A lone LF is
    // part of the line.
    QByteArray readLine();

    bool atEnd() const { return m_position >= m_data.size(); }
    qsizetype position() const { return m_position; }
    // Whether a read ran into the end of the data: a caller that handed over
    // only the beginning of a file can then read more and try again.
    bool ranOut() const { return m_ranOut; }

    // The runtime's day 0.
    static QDate zeroDate() { return QDate(1899, 12, 30); }
    // Parses the universal date form; an invalid result when it is not one.
    static bool parseDate(QByteArrayView text, QDateTime *value);

private:
    enum class Field { Text,
                       DateLiteral };
    QByteArray readField(Field kind, bool *quoted);
    void skipToDelimiter();
    void consumeLineEnd();

    QByteArrayView m_data;
    qsizetype m_position = 0;
    bool m_ranOut = false;
};
