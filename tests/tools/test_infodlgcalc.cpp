#include "support/PadDriver.h"

#include <QDir>
#include <QFile>
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

    // Every <case>.keys in tests/data/infodlgcalc holds pad keys (digits,
    // ".", "<" back, "C", "+-*/=", "%" and "s" the sign change); <case>.txt
    // beside it the display's two lines after them.
    void theDisplay_data()
    {
        QTest::addColumn<QString>("keys");
        const QDir folder(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/infodlgcalc"));
        const QStringList cases = folder.entryList({QStringLiteral("*.keys")}, QDir::Files, QDir::Name);
        QVERIFY(cases.size() >= 16);
        for (const QString &name : cases)
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }

    void theDisplay()
    {
        QFETCH(QString, keys);
        QFile input(keys), expected(keys.chopped(4) + QStringLiteral("txt"));
        QVERIFY(input.open(QIODevice::ReadOnly | QIODevice::Text) && expected.open(QIODevice::ReadOnly | QIODevice::Text));
        pad->pressCalculator(QString::fromUtf8(input.readAll()).trimmed());
        const QStringList display = QString::fromUtf8(expected.readAll()).split(u'\n');
        QCOMPARE(pad->dialog->DisplayDigit->text(), display.value(0) + QStringLiteral("\r\n") + display.value(1));
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
