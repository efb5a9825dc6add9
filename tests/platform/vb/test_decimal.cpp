#include "platform/vb/Decimal.h"
#include "platform/vb/VbError.h"

#include <QFile>
#include <QtTest>

// Each line of tests/data/decimal/cases.txt is one operation and its exact
// answer: "add|sub|mul|div A B", "compare A B", "parse TEXT", "display A"
// (the "#,0.##" format), "currency A" or "whole N", then " => " and the
// result with every digit of its scale, or "error N" for a run-time error.
class TestDecimal : public QObject
{
    Q_OBJECT

    static QString evaluate(const QStringList &words)
    {
        const QString &operation = words.value(0);
        if (operation == u"whole")
            return Decimal(words.value(1).toLongLong()).toString();
        const Decimal a = Decimal::fromText(words.value(1));
        if (operation == u"parse")
            return a.toString();
        if (operation == u"display")
            return a.toDisplayText();
        if (operation == u"currency")
            return a.toCurrency().toString();
        const Decimal b = Decimal::fromText(words.value(2));
        if (operation == u"compare")
            return a < b ? u"<"_qs : a == b ? u"="_qs : u">"_qs;
        if (operation == u"add")
            return (a + b).toString();
        if (operation == u"sub")
            return (a - b).toString();
        if (operation == u"mul")
            return (a * b).toString();
        if (operation == u"div")
            return (a / b).toString();
        return u"unknown operation"_qs;
    }

private slots:
    void operations_data()
    {
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("answer");
        QFile table(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/decimal/cases.txt"));
        QVERIFY(table.open(QIODevice::ReadOnly | QIODevice::Text));
        int rows = 0;
        while (!table.atEnd()) {
            const QString line = QString::fromUtf8(table.readLine()).chopped(1);
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            const qsizetype arrow = line.indexOf(u" => "_qs);
            QVERIFY2(arrow > 0, qPrintable(line));
            QTest::newRow(qPrintable(line.left(arrow))) << line.left(arrow) << line.mid(arrow + 4);
            ++rows;
        }
        QVERIFY(rows >= 70);
    }

    void operations()
    {
        QFETCH(QString, asked);
        QString result;
        try {
            result = evaluate(asked.split(u' ', Qt::SkipEmptyParts));
        } catch (const VbError &error) {
            result = u"error %1"_qs.arg(error.number());
        }
        QTEST(result, "answer");
    }
};

QTEST_GUILESS_MAIN(TestDecimal)
#include "test_decimal.moc"
