#include "support/PadDriver.h"

#include <QLabel>
#include <QTest>

// The calculator pad: keys, the two-line display, errors shown as "E", the
// sign change and handing results on to the focused control.
class TestInfoDlgCalc : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;

private slots:
    void initTestCase()
    {
        pad = std::make_unique<PadDriver>(QStringLiteral(LANTERN_PROGRAM_DIR), InfoDlg::CalculatorMode, 1.0);
        QVERIFY(pad->show());
    }

    void init()
    {
        pad->dialog->setOptions(0);
        pad->pressCalculator(QStringLiteral("C"));
    }

    // Keys: digits, ".", "<" back, "C", "+-*/=", "%" and "s" the sign change.
    void theDisplay_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("display");
        QTest::newRow("cleared") << "" << "0.\r\n";
        QTest::newRow("a number") << "12" << "12.\r\n";
        QTest::newRow("the pending operator below") << "12+" << "12.\r\n+";
        QTest::newRow("the next number") << "12+3" << "3.\r\n+";
        QTest::newRow("left to right") << "12+3*" << "15.\r\n*";
        QTest::newRow("equals") << "12+3*2=" << "30.\r\n=";
        QTest::newRow("typed after a result") << "12+3*2=1234.5" << "1,234.5\r\n=";
        QTest::newRow("percent appended") << "200+10%" << "10.\r\n+10%";
        QTest::newRow("percent is a hundredth") << "200+10%=" << "200.1\r\n=";
        QTest::newRow("percent alone") << "5%" << "5.\r\n5%";
        QTest::newRow("division by zero") << "5/0=" << "E\r\n";
        QTest::newRow("a digit after the point was taken back") << "12<3" << "E\r\n";
        QTest::newRow("a key after an error") << "5/0=C7" << "7.\r\n";
        QTest::newRow("sign change") << "5s" << "-5.\r\n";
        QTest::newRow("sign change after the pending operation") << "10+3s" << "-13.\r\n";
        QTest::newRow("sign change leaves equals pending") << "10+3s1=" << "1.\r\n=";
    }

    void theDisplay()
    {
        QFETCH(QString, keys);
        QFETCH(QString, display);
        pad->pressCalculator(keys);
        QCOMPARE(pad->dialog->DisplayDigit->text(), display);
    }

    void resultsGoToTheFocusedTextControl()
    {
        pad->focus(pad->line, QStringLiteral("old text"));
        pad->pressCalculator(QStringLiteral("7+"));
        QCOMPARE(pad->line->text(), QStringLiteral("old text"));   // not handed on unless asked
        pad->dialog->setOptions(InfoDlg::TransferResults);
        pad->pressCalculator(QStringLiteral("1.25="));
        QCOMPARE(pad->line->text(), QStringLiteral("8.25"));
        pad->pressCalculator(QStringLiteral("s"));
        QCOMPARE(pad->line->text(), QStringLiteral("-8.25"));
    }

    void otherControlsGetTheResultThroughTheHost()
    {
        pad->focus(pad->button);
        pad->dialog->setOptions(InfoDlg::TransferResults);
        QList<qint64> amounts;
        QObject listener;
        connect(pad->dialog, &InfoDlg::ResultTransfer, &listener, [&amounts](Currency &amount) {
            amounts << amount.tenThousandths();
        });
        pad->pressCalculator(QStringLiteral("6+4"));
        QCOMPARE(amounts, QList<qint64>({60000}));
        // The sign change hands its result on once, after the whole change.
        pad->pressCalculator(QStringLiteral("s"));
        QCOMPARE(amounts, QList<qint64>({60000, -100000}));
    }
};

QTEST_MAIN(TestInfoDlgCalc)
#include "test_infodlgcalc.moc"
