#include "tools/Calculator.h"

#include <QSignalSpy>
#include <QtTest>

// Key sequences are written as steps: "[+]" is Eval("+"), "[%]" EvalPercent,
// "[C]" Clear, and anything else the characters given to SetText.
class TestCalculator : public QObject
{
    Q_OBJECT

private slots:
    void keySequences_data();
    void keySequences();
    void accumulatorRunsLeftToRight();
    void accumulatorKeepsFullPrecision();
    void clearAndOperatorState();
    void failingEvaluation_data();
    void failingEvaluation();
    void failingEntry_data();
    void failingEntry();
    void money_data();
    void money();

private:
    static void press(Calculator &calculator, const QString &step);
};

static const QString Backspace = QString(QChar(8));

void TestCalculator::press(Calculator &calculator, const QString &step)
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

void TestCalculator::keySequences_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("shown");

    QTest::newRow("left to right, no precedence")
        << QStringList{"12", "[+]", "3", "[*]", "2", "[=]"}
        << QStringList{"12.", "12.", "3.", "15.", "2.", "30."};
    QTest::newRow("digits regroup as typed")
        << QStringList{"1", "2", "3", "4", "5", "6", "7"}
        << QStringList{"1.", "12.", "123.", "1,234.", "12,345.", "123,456.", "1,234,567."};
    QTest::newRow("fraction digits stay as typed until an operator")
        << QStringList{"1234567", ".", "5", "0", "[=]"}
        << QStringList{"1,234,567.", "1,234,567.", "1,234,567.5", "1,234,567.50", "1,234,567.5"};
    QTest::newRow("no limit on typed fraction digits")
        << QStringList{"1", ".", "0000000000000000000000000000001", "[=]"}
        << QStringList{"1.", "1.", "1.0000000000000000000000000000001", "1."};
    QTest::newRow("a zero stays one zero") << QStringList{"0", "0"} << QStringList{"0.", "0."};
    QTest::newRow("tenths add exactly")
        << QStringList{".1", "[+]", ".2", "[=]"} << QStringList{"0.1", "0.1", "0.2", "0.3"};
    QTest::newRow("display rounds half away from zero")
        << QStringList{"1", "[/]", "8", "[=]"} << QStringList{"1.", "1.", "8.", "0.13"};
    QTest::newRow("negative display rounds half away from zero")
        << QStringList{"1", "-", "[/]", "8", "[=]"} << QStringList{"1.", "-1.", "-1.", "8.", "-0.13"};
    QTest::newRow("several keys in one call") << QStringList{"-12"} << QStringList{"-12."};
    QTest::newRow("typed minus before the digits")
        << QStringList{"-", "0", "5"} << QStringList{"-0.", "-0.", "-5."};
    QTest::newRow("second minus is not checked")
        << QStringList{"5", "-", "-", "3"} << QStringList{"5.", "-5.", "--5.", "--53"};
    QTest::newRow("yen mark, separators and other keys ignored")
        << QStringList{QStringLiteral("1\\2, 3\u00a5x")} << QStringList{"123."};
    QTest::newRow("percent is a division by a hundred")
        << QStringList{"200", "[+]", "10", "[%]", "[=]"} << QStringList{"200.", "200.", "10.", "0.1", "200.1"};
    QTest::newRow("digits after percent extend the whole part")
        << QStringList{"50", "[%]", "7"} << QStringList{"50.", "0.5", "7."};
    QTest::newRow("a key after a result starts a fresh number")
        << QStringList{"5", "[+]", "3", "[=]", "4"} << QStringList{"5.", "5.", "3.", "8.", "4."};
    QTest::newRow("operators after a result only replace the pending one")
        << QStringList{"5", "[+]", "[-]", "[*]", "2", "[=]"} << QStringList{"5.", "5.", "5.", "5.", "2.", "10."};
    QTest::newRow("equals does not repeat the last step")
        << QStringList{"2", "[+]", "3", "[=]", "[=]"} << QStringList{"2.", "2.", "3.", "5.", "5."};
    QTest::newRow("a number after equals starts a new calculation")
        << QStringList{"2", "[+]", "3", "[=]", "7", "[=]", "[+]", "1", "[=]"}
        << QStringList{"2.", "2.", "3.", "5.", "7.", "7.", "7.", "1.", "8."};
    QTest::newRow("backspace removes the point")
        << QStringList{"12", Backspace} << QStringList{"12.", "12"};
    QTest::newRow("backspace leaves the decimal point mode on")
        << QStringList{"1", ".", "5", Backspace, Backspace, "7", "[=]"}
        << QStringList{"1.", "1.", "1.5", "1.", "1", "17", "17."};
    QTest::newRow("large result grouped")
        << QStringList{"999999", "[*]", "999999", "[=]"}
        << QStringList{"999,999.", "999,999.", "999,999.", "999,998,000,001."};
}

void TestCalculator::keySequences()
{
    QFETCH(QStringList, steps);
    QFETCH(QStringList, shown);
    QCOMPARE(steps.size(), shown.size());

    Calculator calculator;
    calculator.Clear();
    for (qsizetype i = 0; i < steps.size(); ++i) {
        press(calculator, steps[i]);
        QVERIFY2(calculator.Text() == shown[i],
                 qPrintable(QStringLiteral("after step %1 (%2): %3").arg(i + 1).arg(steps[i], calculator.Text())));
    }
}

void TestCalculator::accumulatorRunsLeftToRight()
{
    Calculator calculator;
    calculator.Clear();
    const QStringList steps{"12", "[+]", "3", "[*]", "2", "[=]"};
    const QStringList accumulated{"", "12.", "12.", "15.", "15.", "30."};
    QStringList returned;
    for (qsizetype i = 0; i < steps.size(); ++i) {
        if (steps[i].startsWith(u'['))
            returned << calculator.Eval(steps[i].mid(1, 1)).toString();
        else
            calculator.SetText(steps[i]);
        const auto accumulator = calculator.Accumulator();
        QCOMPARE(accumulator ? accumulator->toDisplayText() : QString(), accumulated[i]);
    }
    QCOMPARE(returned, (QStringList{"12", "15", "30"}));
    QCOMPARE(calculator.Count(), qint16(1));
    QCOMPARE(calculator.Operand()->toString(), QStringLiteral("2"));
}

void TestCalculator::accumulatorKeepsFullPrecision()
{
    Calculator calculator;
    calculator.Clear();
    calculator.SetText("1");
    calculator.Eval("/");
    calculator.SetText("3");
    // The value returned is the displayed one, the accumulator the exact one.
    QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0.33"));
    QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.3333333333333333333333333333"));
    calculator.Eval("*");
    calculator.SetText("3");
    QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("1"));
    QCOMPARE(calculator.Text(), QStringLiteral("1."));
    QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.9999999999999999999999999999"));

    // And sums of tenths stay exact.
    calculator.Clear();
    calculator.SetText(".1");
    calculator.Eval("+");
    calculator.SetText(".2");
    QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0.3"));
    QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.3"));
}

void TestCalculator::clearAndOperatorState()
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
    QVERIFY(!calculator.Accumulator());
    QVERIFY(!calculator.Operand());

    // "=" at once evaluates the "0." shown.
    QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0"));
    QCOMPARE(changes.count(), 2);
    QCOMPARE(calculator.Text(), QStringLiteral("0."));
    QCOMPARE(calculator.Count(), qint16(1));
    QCOMPARE(calculator.Operator(), QStringLiteral("="));
    QCOMPARE(calculator.State(), Calculator::ResultShown);

    // Entry raises no event; the operator takes only its first character, and
    // an empty one means none.
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

void TestCalculator::failingEvaluation_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("textAfter");
    QTest::addColumn<QString>("accumulatorAfter");
    QTest::addColumn<int>("countAfter");

    const QString divisionByZero = VbError::divisionByZero().description();
    const QString typeMismatch = VbError::typeMismatch().description();
    const QString overflow = VbError::overflow().description();

    QTest::newRow("division by zero") << QStringList{"5", "[/]", "0", "[=]"} << divisionByZero << "0." << "5." << 1;
    QTest::newRow("two minus signs as the first number")
        << QStringList{"5", "-", "-", "[+]"} << typeMismatch << "--5." << "" << 1;
    QTest::newRow("two minus signs as the operand")
        << QStringList{"12", "[+]", "5", "-", "-", "[=]"} << typeMismatch << "--5." << "12." << 2;
    QTest::newRow("overflow")
        << QStringList{"79228162514264337593543950335", "[+]", "1", "[=]"} << overflow << "1."
        << "79,228,162,514,264,337,593,543,950,335." << 1;
    QTest::newRow("nothing left to read")
        << QStringList{"0", Backspace, Backspace, "[=]"} << typeMismatch << "" << "" << 1;
    QTest::newRow("percent of two minus signs")
        << QStringList{"5", "-", "-", "[%]"} << typeMismatch << "--5." << "" << 0;
}

void TestCalculator::failingEvaluation()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, message);
    QFETCH(QString, textAfter);
    QFETCH(QString, accumulatorAfter);
    QFETCH(int, countAfter);

    Calculator calculator;
    calculator.Clear();
    for (qsizetype i = 0; i + 1 < steps.size(); ++i)
        press(calculator, steps[i]);
    QSignalSpy changes(&calculator, &Calculator::Change);
    QSignalSpy errors(&calculator, &Calculator::Error);

    int number = 0;
    try {
        press(calculator, steps.last());
    } catch (const VbError &error) {
        number = error.number();
    }
    QCOMPARE(number, -2147220991);
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.first().first().toString(), message);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(calculator.Text(), textAfter);
    const auto accumulator = calculator.Accumulator();
    QCOMPARE(accumulator ? accumulator->toDisplayText() : QString(), accumulatorAfter);
    QCOMPARE(int(calculator.Count()), countAfter);
    QCOMPARE(calculator.State(), Calculator::Entering);

    // The calculator stays usable: Clear starts over.
    calculator.Clear();
    calculator.SetText("4");
    QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("4"));
}

void TestCalculator::failingEntry_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("textAfter");

    QTest::newRow("digit after the point was removed") << QStringList{"12", Backspace} << "3" << 5 << "12";
    QTest::newRow("digit after a second minus")
        << QStringList{"5", "-", "-", "3"} << "4" << 5 << "--53";
    QTest::newRow("a digit more than the largest number")
        << QStringList{"79228162514264337593543950335"} << "0" << 6 << "79,228,162,514,264,337,593,543,950,335.";
}

void TestCalculator::failingEntry()
{
    QFETCH(QStringList, steps);
    QFETCH(QString, key);
    QFETCH(int, number);
    QFETCH(QString, textAfter);

    Calculator calculator;
    calculator.Clear();
    for (const QString &step : steps)
        press(calculator, step);
    QSignalSpy errors(&calculator, &Calculator::Error);

    int thrown = 0;
    try {
        calculator.SetText(key);
    } catch (const VbError &error) {
        thrown = error.number();
    }
    QCOMPARE(thrown, number);
    QCOMPARE(errors.count(), 0); // entry raises no event, not even on failure
    QCOMPARE(calculator.Text(), textAfter);
}

void TestCalculator::money_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<qint64>("tenThousandths");

    QTest::newRow("typed fraction, half to even down") << QStringList{"1234.56785"} << qint64(12345678);
    QTest::newRow("half to even up") << QStringList{"1.00015"} << qint64(10002);
    QTest::newRow("negative") << QStringList{"-", "2", ".", "5"} << qint64(-25000);
    QTest::newRow("the displayed result, not the exact one")
        << QStringList{"1", "[/]", "3", "[=]"} << qint64(3300);
    QTest::newRow("not a number gives zero") << QStringList{"5", "-", "-"} << qint64(0);
    QTest::newRow("out of range gives zero") << QStringList{"922337203685478"} << qint64(0);
}

void TestCalculator::money()
{
    QFETCH(QStringList, steps);
    QFETCH(qint64, tenThousandths);

    Calculator calculator;
    calculator.Clear();
    for (const QString &step : steps)
        press(calculator, step);
    QCOMPARE(calculator.Money().tenThousandths(), tenThousandths);
}

QTEST_GUILESS_MAIN(TestCalculator)
#include "test_calculator.moc"
