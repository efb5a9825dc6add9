#include "platform/vb/VbDateFormat.h"

#include <unicode/calendar.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>

namespace {

// Noon of the day in universal time: the calendar then sees that very day
// whatever the zone.
UDate noonOf(const QDate &date)
{
    return UDate(QDateTime(date, QTime(12, 0), Qt::UTC).toMSecsSinceEpoch());
}

const icu::Locale &japaneseCalendarLocale()
{
    static const icu::Locale locale("ja_JP@calendar=japanese");
    return locale;
}

QString fromIcu(const icu::UnicodeString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

QString weekdayName(const QDate &date, bool full)
{
    static const char16_t *const names[] = {u"月", u"火", u"水", u"木", u"金", u"土", u"日"};
    const QString day = QString::fromUtf16(names[date.dayOfWeek() - 1]);
    return full ? day + QStringLiteral("曜日") : day;
}

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

QString namedPattern(const QString &name)
{
    if (name.compare(u"Long Date", Qt::CaseInsensitive) == 0)
        return QStringLiteral("yyyy年m月d日");
    if (name.compare(u"Short Date", Qt::CaseInsensitive) == 0)
        return QStringLiteral("yyyy/mm/dd");
    if (name.compare(u"Long Time", Qt::CaseInsensitive) == 0)
        return QStringLiteral("h:nn:ss");
    if (name.compare(u"Short Time", Qt::CaseInsensitive) == 0)
        return QStringLiteral("hh:nn");
    if (name.compare(u"General Date", Qt::CaseInsensitive) == 0)
        return QStringLiteral("yyyy/mm/dd h:nn:ss");
    return name;
}

// How many times the letter at index repeats from there.
int runLength(const QString &text, int index)
{
    int end = index;
    while (end < text.size() && text.at(end).toLower() == text.at(index).toLower())
        ++end;
    return end - index;
}

// One ICU date pattern applied to the day in the Japanese calendar.
QString icuFormat(const QDate &date, const char16_t *pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat formatter(icu::UnicodeString(pattern), japaneseCalendarLocale(), status);
    if (U_FAILURE(status))
        return QString();
    formatter.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    formatter.format(noonOf(date), text);
    return fromIcu(text);
}

} // namespace

QString VbDateFormat::eraName(const QDate &date)
{
    return icuFormat(date, u"GGGG");
}

int VbDateFormat::eraYear(const QDate &date)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(
        icu::Calendar::createInstance(icu::TimeZone::getGMT()->clone(), japaneseCalendarLocale(), status));
    if (U_FAILURE(status))
        return date.year();
    calendar->setTime(noonOf(date), status);
    const int year = calendar->get(UCAL_YEAR, status);
    return U_SUCCESS(status) ? year : date.year();
}

QString VbDateFormat::format(const QDateTime &value, const QString &pattern)
{
    const QString source = namedPattern(pattern);
    const QDate date = value.date();
    const QTime time = value.time();
    QString out;
    bool afterHour = false;
    for (int i = 0; i < source.size();) {
        const QChar c = source.at(i);
        if (c == u'"') {
            const int close = source.indexOf(u'"', i + 1);
            const int end = close < 0 ? source.size() : close;
            out += source.mid(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        const int run = runLength(source, i);
        switch (c.toLower().unicode()) {
        case 'g': {
            if (run >= 3)
                out += eraName(date);
            else if (run == 2)
                out += eraName(date).left(1);
            else
                out += icuFormat(date, u"GGGGG"); // the Latin initial, "R"
            break;
        }
        case 'e':
            out += run >= 2 ? twoDigits(eraYear(date)) : QString::number(eraYear(date));
            break;
        case 'y':
            out += run >= 3 ? QString::number(date.year()) : twoDigits(date.year() % 100);
            break;
        case 'm':
            if (afterHour)
                out += run >= 2 ? twoDigits(time.minute()) : QString::number(time.minute());
            else
                out += run >= 2 ? twoDigits(date.month()) : QString::number(date.month());
            break;
        case 'd':
            out += run >= 2 ? twoDigits(date.day()) : QString::number(date.day());
            break;
        case 'a':
            if (run >= 3) {
                out += weekdayName(date, run >= 4);
            } else {
                out += source.mid(i, run);
            }
            break;
        case 'h':
            out += run >= 2 ? twoDigits(time.hour()) : QString::number(time.hour());
            break;
        case 'n':
            out += run >= 2 ? twoDigits(time.minute()) : QString::number(time.minute());
            break;
        case 's':
            out += run >= 2 ? twoDigits(time.second()) : QString::number(time.second());
            break;
        default:
            out += source.mid(i, run);
            break;
        }
        if (c.isLetter())
            afterHour = c.toLower() == u'h';
        i += run;
    }
    return out;
}
