#include "platform/vb/Decimal.h"
#include "platform/vb/VbError.h"

#include <QtTest>
#include <functional>

// The decimal type's results written out by hand for the cases where the
// rules matter most; test_decimal_reference.py checks many
// thousands of random ones against an exact reference.
class TestDecimal : public QObject
{
    Q_OBJECT

private slots:
    void arithmetic_data();
    void arithmetic();
    void fromText_data();
    void fromText();
    void displayText_data();
    void displayText();
    void currency_data();
    void currency();
    void comparesValuesNotScales();

private:
    // The result's full text, or "error N" for a run-time error.
    static QString outcome(const std::function<QString()> &step);
};

QString TestDecimal::outcome(const std::function<QString()> &step)
{
    try {
        return step();
    } catch (const VbError &error) {
        return QStringLiteral("error %1").arg(error.number());
    }
}

static const QString Max = QStringLiteral("79228162514264337593543950335");

void TestDecimal::arithmetic_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("expected");

    // Sums keep the larger scale and every digit.
    QTest::newRow("tenths add exactly") << "0.1" << "+" << "0.2" << "0.3";
    QTest::newRow("scales align") << "1.5" << "+" << "2.25" << "3.75";
    QTest::newRow("trailing zeros kept") << "1.50" << "-" << "0.5" << "1.00";
    QTest::newRow("sign changes") << "2" << "-" << "5.5" << "-3.5";
    QTest::newRow("cancels to plain zero") << "-5" << "+" << "5" << "0";
    QTest::newRow("overflow on sum") << Max << "+" << "1" << "error 6";
    // Too many digits: rounded at the scale that fits, halves to even.
    QTest::newRow("rounds off a small fraction") << Max << "+" << "0.4" << Max;
    QTest::newRow("half rounds to even, up past the limit") << Max << "+" << "0.5" << "error 6";
    QTest::newRow("half rounds to even, down") << "79228162514264337593543950334" << "+" << "0.5"
                                               << "79228162514264337593543950334";
    QTest::newRow("scale 28 sum drops a digit") << "7.9228162514264337593543950335" << "+" << "0.0000000000000000000000000001"
                                                << "7.922816251426433759354395034";

    // Products keep the sum of the scales while it fits.
    QTest::newRow("product scale") << "1.5" << "*" << "2.0" << "3.00";
    QTest::newRow("product of tenths") << "0.1" << "*" << "0.1" << "0.01";
    QTest::newRow("signs multiply") << "-1.25" << "*" << "-4" << "5.00";
    QTest::newRow("product at scale 28") << "0.00000000000001" << "*" << "0.00000000000001"
                                         << "0.0000000000000000000000000001";
    QTest::newRow("product below scale 28 vanishes") << "0.000000000000001" << "*" << "0.00000000000001"
                                                     << "0.0000000000000000000000000000";
    QTest::newRow("product half at scale 28 to even") << "0.000000000000003" << "*" << "0.00000000000005"
                                                      << "0.0000000000000000000000000002";
    QTest::newRow("largest times one point nought") << Max << "*" << "1.0" << Max;
    QTest::newRow("largest times a tenth") << Max << "*" << "0.1" << "7922816251426433759354395033.5";
    QTest::newRow("overflow on product") << Max << "*" << "1.1" << "error 6";
    QTest::newRow("third times three") << "0.3333333333333333333333333333" << "*" << "3"
                                       << "0.9999999999999999999999999999";

    // Quotients: even ones keep their natural scale, others as many digits as fit.
    QTest::newRow("one third") << "1" << "/" << "3" << "0.3333333333333333333333333333";
    QTest::newRow("two thirds rounds up") << "2" << "/" << "3" << "0.6666666666666666666666666667";
    QTest::newRow("ten thirds has 29 digits") << "10" << "/" << "3" << "3.3333333333333333333333333333";
    QTest::newRow("quarter, places nine at a time") << "1" << "/" << "4" << "0.250000000";
    QTest::newRow("eighth from a tenth") << "1.0" << "/" << "8" << "0.1250000000";
    QTest::newRow("even quotient keeps scale") << "1.00" << "/" << "2" << "0.50";
    QTest::newRow("negative divisor") << "7.5" << "/" << "-2.5" << "-3";
    QTest::newRow("divisor with more decimals") << "1" << "/" << "0.001" << "1000";
    QTest::newRow("half at scale 28 to even") << "0.0000000000000000000000000003" << "/" << "2"
                                              << "0.0000000000000000000000000002";
    // The quotient's upper bits already reach 2^64 / 10: no place more.
    QTest::newRow("largest by ten stops a place short") << Max << "/" << "10" << "7922816251426433759354395034";
    QTest::newRow("just below that takes the place") << "79228162514264337567774146557" << "/" << "10"
                                                     << "7922816251426433756777414655.7";
    QTest::newRow("overflow on quotient") << Max << "/" << "0.1" << "error 6";
    QTest::newRow("division by zero") << "5" << "/" << "0" << "error 11";
}

void TestDecimal::arithmetic()
{
    QFETCH(QString, left);
    QFETCH(QString, operation);
    QFETCH(QString, right);
    QFETCH(QString, expected);

    const QString actual = outcome([&] {
        const Decimal a = Decimal::fromText(left);
        const Decimal b = Decimal::fromText(right);
        const QChar sign = operation.at(0);
        const Decimal result = sign == u'+' ? a + b : sign == u'-' ? a - b : sign == u'*' ? a * b : a / b;
        return result.toString();
    });
    QCOMPARE(actual, expected);
}

void TestDecimal::fromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("display text") << "1,234,567.50" << "1234567.50";
    QTest::newRow("trailing point") << "1,234." << "1234";
    QTest::newRow("negative whole") << "-5." << "-5";
    QTest::newRow("no whole digits") << ".25" << "0.25";
    QTest::newRow("the largest") << "79,228,162,514,264,337,593,543,950,335." << Max;
    QTest::newRow("long fraction rounds at 28") << "0.12345678901234567890123456785" << "0.1234567890123456789012345678";
    QTest::newRow("long fraction past half") << "0.123456789012345678901234567850001" << "0.1234567890123456789012345679";
    QTest::newRow("fraction cut at 96 bits") << "7922816251426433759354395033.54" << "7922816251426433759354395033.5";
    QTest::newRow("rounding up past 96 bits drops a digit more") << "7922816251426433759354395033.56"
                                                                 << "7922816251426433759354395034";
    QTest::newRow("largest plus a fraction") << Max + ".4999" << Max;
    QTest::newRow("whole part too large") << "79228162514264337593543950336" << "error 6";
    QTest::newRow("rounds past the largest") << Max + ".5" << "error 6";
    QTest::newRow("two minus signs") << "--5." << "error 13";
    QTest::newRow("empty") << "" << "error 13";
    QTest::newRow("point alone") << "." << "error 13";
    QTest::newRow("two points") << "1.2.3" << "error 13";
    QTest::newRow("group separator in fraction") << "1.2,3" << "error 13";
    QTest::newRow("malformed beats too long") << "999999999999999999999999999999x" << "error 13";
}

void TestDecimal::fromText()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(outcome([&] { return Decimal::fromText(text).toString(); }), expected);
}

void TestDecimal::displayText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("zero") << "0" << "0.";
    QTest::newRow("whole number") << "1234" << "1,234.";
    QTest::newRow("one decimal") << "1234.5" << "1,234.5";
    QTest::newRow("trailing zero dropped") << "1.10" << "1.1";
    QTest::newRow("two thirds") << "0.6666666666666666666666666667" << "0.67";
    QTest::newRow("negative") << "-5" << "-5.";
    QTest::newRow("half away from zero") << "0.125" << "0.13";
    QTest::newRow("negative half away from zero") << "-0.125" << "-0.13";
    QTest::newRow("carry into whole part") << "999.995" << "1,000.";
    QTest::newRow("negative that rounds to nothing keeps its sign") << "-0.004" << "-0.";
    QTest::newRow("the largest") << Max << "79,228,162,514,264,337,593,543,950,335.";
}

void TestDecimal::displayText()
{
    QFETCH(QString, value);
    QFETCH(QString, expected);
    QCOMPARE(Decimal::fromText(value).toDisplayText(), expected);
}

void TestDecimal::currency_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("whole") << "12" << "12.0000";
    QTest::newRow("half to even, down") << "1.23445" << "1.2344";
    QTest::newRow("half to even, up") << "1.23455" << "1.2346";
    QTest::newRow("negative") << "-0.00015" << "-0.0002";
    QTest::newRow("largest") << "922337203685477.5807" << "922337203685477.5807";
    QTest::newRow("smallest") << "-922337203685477.5808" << "-922337203685477.5808";
    QTest::newRow("too large") << "922337203685477.5808" << "error 6";
}

void TestDecimal::currency()
{
    QFETCH(QString, value);
    QFETCH(QString, expected);
    QCOMPARE(outcome([&] { return Decimal::fromText(value).toCurrency().toString(); }), expected);
}

void TestDecimal::comparesValuesNotScales()
{
    QVERIFY(Decimal::fromText("1.5") == Decimal::fromText("1.50"));
    QVERIFY(Decimal::fromText("-0") == Decimal());
    QVERIFY(Decimal::fromText("-2") < Decimal::fromText("-1.99"));
    QVERIFY(Decimal::fromText("0.0000000000000000000000000001") < Decimal::fromText("0.001"));
    QVERIFY(Decimal::fromText(Max) != Decimal::fromText("79228162514264337593543950334"));
    QCOMPARE(Decimal(-42).toString(), QStringLiteral("-42"));
}

QTEST_GUILESS_MAIN(TestDecimal)
#include "test_decimal.moc"
