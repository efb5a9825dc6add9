#include "tools/Calculator.h"

#include <QSignalSpy>
#include <QtTest>

// Key sequences are written as steps split by "|": "[+]" is Eval("+"), "[%]"
// EvalPercent, "[C]" Clear, and anything else the characters given to SetText
// ("\b" is the backspace key).
class TestCalculator : public QObject
{
    Q_OBJECT

private:
    static void press(Calculator &calculator, const QString &step)
    {
        if (step == u"[C]")
            calculator.Clear();
        else if (step == u"[%]")
            calculator.EvalPercent();
        else if (step.size() >= 2 && step.startsWith(u'[') && step.endsWith(u']'))
            calculator.Eval(step.mid(1, step.size() - 2));
        else
            calculator.SetText(step);
    }

    static QString accumulator(const Calculator &calculator)
    {
        return calculator.Accumulator() ? calculator.Accumulator()->toDisplayText() : QString();
    }

private slots:
    void keySequences_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("shown");
        QTest::newRow("left to right, no precedence") << "12|[+]|3|[*]|2|[=]" << "12.|12.|3.|15.|2.|30.";
        QTest::newRow("digits regroup as typed") << "1|2|3|4|5|6|7" << "1.|12.|123.|1,234.|12,345.|123,456.|1,234,567.";
        QTest::newRow("fraction digits stay as typed until an operator")
            << "1234567|.|5|0|[=]" << "1,234,567.|1,234,567.|1,234,567.5|1,234,567.50|1,234,567.5";
        QTest::newRow("no limit on typed fraction digits")
            << "1|.|0000000000000000000000000000001|[=]" << "1.|1.|1.0000000000000000000000000000001|1.";
        QTest::newRow("a zero stays one zero") << "0|0" << "0.|0.";
        QTest::newRow("tenths add exactly") << ".1|[+]|.2|[=]" << "0.1|0.1|0.2|0.3";
        QTest::newRow("two thirds round up") << "2|[/]|3|[=]" << "2.|2.|3.|0.67";
        QTest::newRow("display rounds half away from zero") << "1|[/]|8|[=]" << "1.|1.|8.|0.13";
        QTest::newRow("negative rounds half away from zero") << "1|-|[/]|8|[=]" << "1.|-1.|-1.|8.|-0.13";
        QTest::newRow("several keys in one call") << "-12" << "-12.";
        QTest::newRow("typed minus before the digits") << "-|0|5" << "-0.|-0.|-5.";
        QTest::newRow("second minus is not checked") << "5|-|-|3" << "5.|-5.|--5.|--53";
        QTest::newRow("yen mark, separators and other keys ignored") << QStringLiteral("1\\2, 3\u00a5x") << "123.";
        QTest::newRow("percent is a division by a hundred") << "200|[+]|10|[%]|[=]" << "200.|200.|10.|0.1|200.1";
        QTest::newRow("digits after percent extend the whole part") << "50|[%]|7" << "50.|0.5|7.";
        QTest::newRow("a key after a result starts a fresh number") << "5|[+]|3|[=]|4" << "5.|5.|3.|8.|4.";
        QTest::newRow("operators after a result only replace the pending one")
            << "5|[+]|[-]|[*]|2|[=]" << "5.|5.|5.|5.|2.|10.";
        QTest::newRow("equals does not repeat the last step") << "2|[+]|3|[=]|[=]" << "2.|2.|3.|5.|5.";
        QTest::newRow("a number after equals starts a new calculation")
            << "2|[+]|3|[=]|7|[=]|[+]|1|[=]" << "2.|2.|3.|5.|7.|7.|7.|1.|8.";
        QTest::newRow("backspace removes the point") << "12|\b" << "12.|12";
        QTest::newRow("backspace leaves the decimal point mode on") << "1|.|5|\b|\b|7|[=]" << "1.|1.|1.5|1.|1|17|17.";
        QTest::newRow("large result grouped") << "999999|[*]|999999|[=]" << "999,999.|999,999.|999,999.|999,998,000,001.";
    }

    void keySequences()
    {
        QFETCH(QString, steps);
        QFETCH(QString, shown);
        const QStringList keys = steps.split(u'|'), texts = shown.split(u'|');
        QCOMPARE(keys.size(), texts.size());
        Calculator calculator;
        calculator.Clear();
        for (qsizetype i = 0; i < keys.size(); ++i) {
            press(calculator, keys[i]);
            QVERIFY2(calculator.Text() == texts[i],
                     qPrintable(QStringLiteral("after step %1 (%2): %3").arg(i + 1).arg(keys[i], calculator.Text())));
        }
    }

    // The value returned is the displayed one, the accumulator the exact one.
    void accumulatorKeepsFullPrecision()
    {
        Calculator calculator;
        calculator.Clear();
        calculator.SetText("1");
        QCOMPARE(calculator.Eval("/").toString(), QStringLiteral("1"));
        calculator.SetText("3");
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0.33"));
        QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.3333333333333333333333333333"));
        calculator.Eval("*");
        calculator.SetText("3");
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("1"));
        QCOMPARE(calculator.Text(), QStringLiteral("1."));
        QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.9999999999999999999999999999"));
        // The count never stays at two; the operand is the last number taken.
        QCOMPARE(calculator.Count(), qint16(1));
        QCOMPARE(calculator.Operand()->toString(), QStringLiteral("3"));
    }

    void clearAndOperatorState()
    {
        Calculator calculator;
        QSignalSpy changes(&calculator, &Calculator::Change);
        QCOMPARE(calculator.State(), Calculator::Cleared);
        QCOMPARE(calculator.Text(), QString());
        QCOMPARE(calculator.Operator(), QString());

        calculator.Clear();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(calculator.Text(), QStringLiteral("0."));
        QCOMPARE(calculator.Count(), qint16(0));
        QCOMPARE(calculator.Operator(), QStringLiteral(" "));
        QVERIFY(!calculator.Accumulator() && !calculator.Operand());

        // "=" at once evaluates the "0." shown.
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0"));
        QCOMPARE(changes.count(), 2);
        QCOMPARE(calculator.Text(), QStringLiteral("0."));
        QCOMPARE(calculator.Count(), qint16(1));
        QCOMPARE(calculator.Operator(), QStringLiteral("="));
        QCOMPARE(calculator.State(), Calculator::ResultShown);

        // Entry raises no event; the operator takes only its first character,
        // and an empty one means none.
        calculator.SetText("5.");
        QCOMPARE(changes.count(), 2);
        QCOMPARE(calculator.State(), Calculator::Entering);
        QVERIFY(calculator.DecimalPoint());
        calculator.Eval("+-");
        QCOMPARE(calculator.Operator(), QStringLiteral("+"));
        calculator.Eval("");
        QCOMPARE(calculator.Operator(), QStringLiteral(" "));
        calculator.EvalPercent();
        QCOMPARE(changes.count(), 5);

        // Clear leaves the decimal point mode for the next entry to reset.
        calculator.Clear();
        QVERIFY(calculator.DecimalPoint());
        calculator.SetText("7");
        QVERIFY(!calculator.DecimalPoint());
        QCOMPARE(calculator.Text(), QStringLiteral("7."));
    }

    // The last step fails: evaluations raise Error with the message and throw
    // the object-defined error 513; entry throws its own error and raises nothing.
    void failures_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("textAfter");
        QTest::addColumn<QString>("accumulatorAfter");
        QTest::addColumn<int>("countAfter");
        const int evalError = -2147220991;
        const QString byZero = VbError::divisionByZero().description();
        const QString mismatch = VbError::typeMismatch().description();
        QTest::newRow("division by zero") << "5|[/]|0|[=]" << evalError << byZero << "0." << "5." << 1;
        QTest::newRow("two minus signs as the first number") << "5|-|-|[+]" << evalError << mismatch << "--5." << "" << 1;
        QTest::newRow("two minus signs as the operand")
            << "12|[+]|5|-|-|[=]" << evalError << mismatch << "--5." << "12." << 2;
        QTest::newRow("overflow") << "79228162514264337593543950335|[+]|1|[=]" << evalError
                                  << VbError::overflow().description() << "1."
                                  << "79,228,162,514,264,337,593,543,950,335." << 1;
        QTest::newRow("nothing left to read") << "0|\b|\b|[=]" << evalError << mismatch << "" << "" << 1;
        QTest::newRow("percent of two minus signs") << "5|-|-|[%]" << evalError << mismatch << "--5." << "" << 0;
        QTest::newRow("digit after the point was removed") << "12|\b|3" << 5 << "" << "12" << "" << 0;
        QTest::newRow("digit after a second minus") << "5|-|-|3|4" << 5 << "" << "--53" << "" << 0;
        QTest::newRow("a digit more than the largest number")
            << "79228162514264337593543950335|0" << 6 << "" << "79,228,162,514,264,337,593,543,950,335." << "" << 0;
    }

    void failures()
    {
        QFETCH(QString, steps);
        QFETCH(int, number);
        QFETCH(QString, message);
        QFETCH(QString, textAfter);
        QFETCH(QString, accumulatorAfter);
        QFETCH(int, countAfter);
        const QStringList keys = steps.split(u'|');
        Calculator calculator;
        calculator.Clear();
        for (qsizetype i = 0; i + 1 < keys.size(); ++i)
            press(calculator, keys[i]);
        QSignalSpy changes(&calculator, &Calculator::Change);
        QSignalSpy errors(&calculator, &Calculator::Error);
        int thrown = 0;
        try {
            press(calculator, keys.last());
        } catch (const VbError &error) {
            thrown = error.number();
        }
        QCOMPARE(thrown, number);
        QCOMPARE(errors.count(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QCOMPARE(errors.first().first().toString(), message);
        QCOMPARE(changes.count(), 0);
        QCOMPARE(calculator.Text(), textAfter);
        QCOMPARE(accumulator(calculator), accumulatorAfter);
        QCOMPARE(int(calculator.Count()), countAfter);
        QCOMPARE(calculator.State(), Calculator::Entering);
        // The calculator stays usable: Clear starts over.
        calculator.Clear();
        calculator.SetText("4");
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("4"));
    }

    void money_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<qint64>("tenThousandths");
        QTest::newRow("typed fraction, half to even down") << "1234.56785" << qint64(12345678);
        QTest::newRow("half to even up") << "1.00015" << qint64(10002);
        QTest::newRow("negative") << "-|2|.|5" << qint64(-25000);
        QTest::newRow("the displayed result, not the exact one") << "1|[/]|3|[=]" << qint64(3300);
        QTest::newRow("not a number gives zero") << "5|-|-" << qint64(0);
        QTest::newRow("out of range gives zero") << "922337203685478" << qint64(0);
    }

    void money()
    {
        QFETCH(QString, steps);
        QFETCH(qint64, tenThousandths);
        Calculator calculator;
        calculator.Clear();
        for (const QString &step : steps.split(u'|'))
            press(calculator, step);
        QCOMPARE(calculator.Money().tenThousandths(), tenThousandths);
    }
};

QTEST_GUILESS_MAIN(TestCalculator)
#include "test_calculator.moc"
