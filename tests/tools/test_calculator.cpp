#include "support/CaseTable.h"
#include "support/FileBytes.h"
#include "support/GoldenRows.h"
#include "tools/Calculator.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;

// Steps: "[+]" is Eval("+"), "[%]" EvalPercent, "[C]" Clear, "[BS]" the
// backspace key, anything else the characters given to SetText. Every
// <case>.keys in tests/data/calculator holds such steps, one a line, and
// <case>.txt beside it the display after each step.
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
        else if (step == u"[BS]")
            calculator.SetText(QString(QChar(8)));
        else if (step.size() >= 2 && step.startsWith(u'[') && step.endsWith(u']'))
            calculator.Eval(step.mid(1, step.size() - 2));
        else
            calculator.SetText(step);
    }

    static QString accumulator(const Calculator &calculator)
    {
        return calculator.Accumulator() ? calculator.Accumulator()->toDisplayText() : QString();
    }

    static QStringList lines(const QString &path)
    {
        return QString::fromUtf8(fileBytes(path)).split(u'\n', Qt::SkipEmptyParts);
    }

private slots:
    void keySequences_data() { addGoldenRows(QStringLiteral("calculator"), QStringLiteral("keys")); }

    void keySequences()
    {
        QFETCH(QString, file);
        const QStringList steps = lines(file);
        const QStringList shown = lines(goldenBeside(file, QStringLiteral("txt")));
        QCOMPARE(steps.size(), shown.size());
        Calculator calculator;
        calculator.Clear();
        for (qsizetype i = 0; i < steps.size(); ++i) {
            press(calculator, steps[i]);
            QVERIFY2(calculator.Text() == shown[i],
                     qPrintable(QStringLiteral("after step %1 (%2): %3").arg(i + 1).arg(steps[i], calculator.Text())));
        }
    }

    // The value returned is the displayed one, the accumulator the exact one.
    void accumulatorKeepsFullPrecision()
    {
        Calculator calculator;
        calculator.Clear();
        calculator.SetText("1");
        calculator.Eval("/");
        calculator.SetText("3");
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0.33"));
        QCOMPARE(calculator.Accumulator()->toString(), QStringLiteral("0.3333333333333333333333333333"));
        // The count never stays at two; the operand is the last number taken.
        QCOMPARE(calculator.Count(), qint16(1));
        QCOMPARE(calculator.Operand()->toString(), QStringLiteral("3"));
    }

    void clearAndOperatorState()
    {
        Calculator calculator;
        QSignalSpy changes(&calculator, &Calculator::Change);
        const auto state = [&] {
            return std::tuple(calculator.State(), calculator.Text(), calculator.Operator(), calculator.Count(),
                              accumulator(calculator), int(changes.count()));
        };
        QCOMPARE(state(), std::tuple(Calculator::Cleared, QString(), QString(), qint16(0), QString(), 0));
        calculator.Clear();
        QCOMPARE(state(), std::tuple(Calculator::Cleared, u"0."_s, u" "_s, qint16(0), QString(), 1));
        QVERIFY(!calculator.Operand());
        // "=" at once evaluates the "0." shown.
        QCOMPARE(calculator.Eval("=").toString(), QStringLiteral("0"));
        QCOMPARE(state(), std::tuple(Calculator::ResultShown, u"0."_s, u"="_s, qint16(1), u"0."_s, 2));
        // Entry raises no event; the operator takes only its first character,
        // and an empty one means none.
        calculator.SetText("5.");
        QCOMPARE(state(), std::tuple(Calculator::Entering, u"5."_s, u"="_s, qint16(1), u"0."_s, 2));
        QVERIFY(calculator.DecimalPoint());
        calculator.Eval("+-");
        QCOMPARE(calculator.Operator(), u"+"_s);
        calculator.Eval("");
        QCOMPARE(calculator.Operator(), u" "_s);
        calculator.EvalPercent();
        QCOMPARE(changes.count(), 5);
        // Clear leaves the decimal point mode for the next entry to reset.
        calculator.Clear();
        QVERIFY(calculator.DecimalPoint());
        calculator.SetText("7");
        QVERIFY(!calculator.DecimalPoint());
        QCOMPARE(calculator.Text(), u"7."_s);
    }

    // Every case in tests/data/calculator_failures: steps whose last one
    // fails, and the error, the Error events and message and the state that
    // step reached. It raises no Change, and Clear starts over.
    void failures_data() { addCaseRows(QStringLiteral("calculator_failures"), 9); }

    void failures()
    {
        QFETCH(QString, asked);
        const QStringList keys = asked.split(u'|');
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
        const QString message = errors.isEmpty() ? QString() : errors.first().first().toString();
        QTEST(QStringList({QString::number(thrown), QString::number(errors.count()), message, calculator.Text(),
                           // clang-format off
                           accumulator(calculator), QString::number(calculator.Count())}).join(u'|'), "answer");
        // clang-format on
        QCOMPARE(changes.count(), 0);
        QCOMPARE(calculator.State(), Calculator::Entering);
        calculator.Clear();
        calculator.SetText("4");
        QCOMPARE(calculator.Eval("=").toString(), u"4"_s);
    }

    // Ten-thousandths, rounded half to even from the text shown; zero when
    // the text is no number or out of range.
    void money()
    {
        const QList<std::pair<QString, qint64>> cases = {
            // clang-format off
            {u"1234.56785"_s, 12345678}, {u"1.00015"_s, 10002}, {u"-|2|.|5"_s, -25000},
            {u"1|[/]|3|[=]"_s, 3300}, {u"5|-|-"_s, 0}, {u"922337203685477"_s, 9223372036854770000}, {u"922337203685478"_s, 0},
        };
        // clang-format on
        for (const auto &[steps, tenThousandths] : cases) {
            Calculator calculator;
            calculator.Clear();
            for (const QString &step : steps.split(u'|'))
                press(calculator, step);
            QCOMPARE(std::pair(steps, calculator.Money().tenThousandths()), std::pair(steps, tenThousandths));
        }
    }
};

QTEST_GUILESS_MAIN(TestCalculator)
#include "test_calculator.moc"
