#include "platform/vb/VbFormat.h"

#include <QTest>

class TestDateFormats : public QObject
{
    Q_OBJECT

private slots:
    void namedFormatsAsAJapaneseSystemWritesThem()
    {
        const QDateTime morning(QDate(2026, 1, 5), QTime(9, 5, 7));
        QCOMPARE(VbFormat::dateTime(morning, QStringLiteral("Long Date")), QStringLiteral("2026年1月5日"));
        QCOMPARE(VbFormat::dateTime(morning, QStringLiteral("Short Time")), QStringLiteral("09:05"));
        QCOMPARE(VbFormat::dateTime(morning, QStringLiteral("Short Date")), QStringLiteral("2026/01/05"));
        QCOMPARE(VbFormat::dateTime(morning, QStringLiteral("Long Time")), QStringLiteral("9:05:07"));

        const QDateTime evening(QDate(2026, 11, 23), QTime(23, 16));
        QCOMPARE(VbFormat::dateTime(evening, QStringLiteral("long date")), QStringLiteral("2026年11月23日"));
        QCOMPARE(VbFormat::dateTime(evening, QStringLiteral("Short Time")), QStringLiteral("23:16"));
    }
};

QTEST_APPLESS_MAIN(TestDateFormats)
#include "test_date_formats.moc"
