#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>

// The runtime's Write # statement: how one field of a sequential file is
// written. Text is already in the file's code page; the caller joins fields
// with "," and ends the line with CR LF.
class VbWrite
{
public:
    static constexpr char LineEnd[] = "\r\n";

    // The text between double quotes, written as it stands: a double quote
    // inside it is not escaped, so it cannot be read back whole.
    static QByteArray string(QByteArrayView text);

    // A date in the universal form between "#" signs: "#yyyy-mm-dd hh:mm:ss#",
    // only "#yyyy-mm-dd#" when the time is exactly midnight and only
    // "#hh:mm:ss#" when the date is the zero date 1899-12-30. An invalid
    // QDateTime stands for the zero date itself and is written "#1899-12-30#".
    // Fractions of a second are dropped.
    static QByteArray date(const QDateTime &value);
};
