#include "platform/vb/VbInput.h"

#include "platform/vb/VbError.h"

#include <QRegularExpression>

namespace {

VbError inputPastEndOfFile()
{
    return VbError(62, QStringLiteral("ファイルの終わりを越えて入力しようとしました。"));
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

} // namespace

VbInput::VbInput(QByteArrayView data)
    : m_data(data)
{
}

QByteArray VbInput::readString()
{
    bool quoted = false;
    return readField(Field::Text, &quoted);
}

QDateTime VbInput::readDate()
{
    bool quoted = false;
    const QByteArray text = readField(Field::DateLiteral, &quoted);
    QDateTime value;
    if (!parseDate(text, &value))
        throw VbError::typeMismatch();
    return value;
}

QByteArray VbInput::readField(Field kind, bool *quoted)
{
    while (!atEnd() && (isBlank(m_data[m_position]) || isLineEnd(m_data[m_position])))
        ++m_position;
    if (atEnd()) {
        m_ranOut = true;
        throw inputPastEndOfFile();
    }

    const char first = m_data[m_position];
    const char closing = first == '"' ? '"' : (first == '#' && kind == Field::DateLiteral ? '#' : '\0');
    if (closing) {
        *quoted = true;
        const qsizetype start = m_position + 1;
        const qsizetype end = m_data.indexOf(closing, start);
        if (end < 0) {
            m_position = m_data.size();
            m_ranOut = true;
            throw inputPastEndOfFile();
        }
        m_position = end + 1;
        skipToDelimiter();
        return m_data.sliced(start, end - start).toByteArray();
    }

    *quoted = false;
    const qsizetype start = m_position;
    while (!atEnd() && m_data[m_position] != ',' && !isLineEnd(m_data[m_position]))
        ++m_position;
    qsizetype end = m_position;
    while (end > start && isBlank(m_data[end - 1]))
        --end;
    if (atEnd())
        m_ranOut = true;
    else if (m_data[m_position] == ',')
        ++m_position;
    else
        consumeLineEnd();
    return m_data.sliced(start, end - start).toByteArray();
}

void VbInput::skipToDelimiter()
{
    while (!atEnd() && m_data[m_position] != ',' && !isLineEnd(m_data[m_position]))
        ++m_position;
    if (atEnd())
        m_ranOut = true;
    else if (m_data[m_position] == ',')
        ++m_position;
    else
        consumeLineEnd();
}

void VbInput::consumeLineEnd()
{
    if (!atEnd() && m_data[m_position] == '\r')
        ++m_position;
    if (!atEnd() && m_data[m_position] == '\n')
        ++m_position;
    else if (atEnd())
        m_ranOut = true; // a CR at the end: its LF may still follow
}

QByteArray VbInput::readLine()
{
    if (atEnd()) {
        m_ranOut = true;
        throw inputPastEndOfFile();
    }
    const qsizetype start = m_position;
    qsizetype end = m_data.indexOf('\r', start);
    if (end < 0) {
        m_position = m_data.size();
        m_ranOut = true;
        return m_data.sliced(start).toByteArray();
    }
    m_position = end + 1;
    if (!atEnd() && m_data[m_position] == '\n')
        ++m_position;
    return m_data.sliced(start, end - start).toByteArray();
}

bool VbInput::parseDate(QByteArrayView text, QDateTime *value)
{
    static const QRegularExpression form(QStringLiteral(
        R"(^\s*(?:(\d{1,4})[-/](\d{1,2})[-/](\d{1,2}))?\s*(?:(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?)?\s*$)"));
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(text));
    if (!match.hasMatch() || (match.capturedLength(1) == 0 && match.capturedLength(4) == 0))
        return false;

    QDate day = zeroDate();
    if (match.capturedLength(1) > 0) {
        day = QDate(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
        // The runtime's dates run from the year 100 to 9999.
        if (!day.isValid() || day.year() < 100)
            return false;
    }
    QTime time(0, 0);
    if (match.capturedLength(4) > 0) {
        time = QTime(match.captured(4).toInt(), match.captured(5).toInt(), match.captured(6).toInt());
        if (!time.isValid())
            return false;
    }
    if (day == zeroDate() && time == QTime(0, 0))
        *value = QDateTime();
    else
        *value = QDateTime(day, time, Qt::LocalTime);
    return true;
}
