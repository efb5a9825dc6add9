// Dates in the runtime's Format patterns, as a Japanese system writes them.
#include "platform/vb/VbDateFormat.h"

#include <QtTest>

class TestVbDateFormat : public QObject
{
    Q_OBJECT

private slots:
    void eraDates_data();
    void eraDates();
    void namedAndNumericPatterns();
};

void TestVbDateFormat::eraDates_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Heisei") << QDate(2009, 4, 1) << QStringLiteral("平成21年4月1日 水曜日");
    QTest::newRow("last day of Heisei") << QDate(2019, 4, 30) << QStringLiteral("平成31年4月30日 火曜日");
    // The first year of an era is written 1, not 元年.
    QTest::newRow("first day of Reiwa") << QDate(2019, 5, 1) << QStringLiteral("令和1年5月1日 水曜日");
    QTest::newRow("Reiwa 8") << QDate(2026, 11, 23) << QStringLiteral("令和8年11月23日 月曜日");
    QTest::newRow("last day of Showa") << QDate(1989, 1, 7) << QStringLiteral("昭和64年1月7日 土曜日");
    QTest::newRow("first day of Heisei") << QDate(1989, 1, 8) << QStringLiteral("平成1年1月8日 日曜日");
    QTest::newRow("Sunday, two-digit day") << QDate(2023, 12, 31) << QStringLiteral("令和5年12月31日 日曜日");
}

void TestVbDateFormat::eraDates()
{
    QFETCH(QDate, date);
    QFETCH(QString, expected);
    // Late in the evening: the day, not the universal time, decides.
    const QDateTime evening(date, QTime(23, 59, 59));
    QCOMPARE(VbDateFormat::format(evening, QStringLiteral("ggge年m月d日 aaaa")), expected);
}

void TestVbDateFormat::namedAndNumericPatterns()
{
    const QDateTime saved(QDate(2009, 4, 1), QTime(9, 5, 7));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("yyyymmddhhnnss")), QStringLiteral("20090401090507"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("Long Date")), QStringLiteral("2009年4月1日"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("Short Date")), QStringLiteral("2009/04/01"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("Long Time")), QStringLiteral("9:05:07"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("Short Time")), QStringLiteral("09:05"));
    // m right after an hour is the minute; quoted text is copied.
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("h:m \"at\" d/m")), QStringLiteral("9:5 at 1/4"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("gg ee aaa")), QStringLiteral("平 21 水"));
    QCOMPARE(VbDateFormat::format(saved, QStringLiteral("g")), QStringLiteral("H"));
}

QTEST_GUILESS_MAIN(TestVbDateFormat)
#include "test_vbdateformat.moc"
