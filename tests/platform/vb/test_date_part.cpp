#include "platform/vb/VbDatePart.h"
#include "platform/vb/VbError.h"

#include <QTest>

class TestDatePart : public QObject
{
    Q_OBJECT

private slots:
    void quarterIsTheCalendarQuarter()
    {
        QCOMPARE(VbDatePart::datePart("q", QDate(2026, 1, 1)), 1);
        QCOMPARE(VbDatePart::datePart("q", QDate(2026, 3, 31)), 1);
        QCOMPARE(VbDatePart::datePart("q", QDate(2026, 4, 1)), 2);
        QCOMPARE(VbDatePart::datePart("q", QDate(2026, 9, 30)), 3);
        QCOMPARE(VbDatePart::datePart("Q", QDate(2026, 12, 31)), 4);
    }

    void weekdayCountsFromSunday()
    {
        QCOMPARE(VbDatePart::datePart("w", QDate(2026, 11, 22)), 1); // Sunday
        QCOMPARE(VbDatePart::datePart("w", QDate(2026, 11, 23)), 2); // Monday
        QCOMPARE(VbDatePart::datePart("w", QDate(2026, 11, 28)), 7); // Saturday
    }

    void weekOneHoldsTheFirstOfJanuaryAndWeeksStartOnSunday()
    {
        // 1 January 2026 is a Thursday: Thursday to Saturday make week 1.
        QCOMPARE(VbDatePart::datePart("ww", QDate(2026, 1, 1)), 1);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2026, 1, 3)), 1);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2026, 1, 4)), 2);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2026, 12, 31)), 53);
        // A leap year that starts on a Saturday ends in week 54.
        QCOMPARE(VbDatePart::datePart("ww", QDate(2000, 1, 1)), 1);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2000, 1, 2)), 2);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2000, 12, 31)), 54);
        // A year that starts on a Sunday: its first seven days are week 1.
        QCOMPARE(VbDatePart::datePart("ww", QDate(2023, 1, 7)), 1);
        QCOMPARE(VbDatePart::datePart("ww", QDate(2023, 1, 8)), 2);
    }

    void otherParts()
    {
        const QDate date(2024, 3, 5);
        QCOMPARE(VbDatePart::datePart("yyyy", date), 2024);
        QCOMPARE(VbDatePart::datePart("m", date), 3);
        QCOMPARE(VbDatePart::datePart("d", date), 5);
        QCOMPARE(VbDatePart::datePart("y", date), 65);
    }

    void unknownIntervalIsAnInvalidArgument()
    {
        try {
            VbDatePart::datePart("fortnight", QDate(2026, 1, 1));
            QFAIL("no error raised");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 5);
        }
    }
};

QTEST_APPLESS_MAIN(TestDatePart)
#include "test_date_part.moc"
