#include "app/Globals.h"
#include "tools/InfoDlg.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

// The calculator pad: keys, the two-line display, errors shown as "E", the
// sign change and handing results on to the focused control.
class TestInfoDlgCalc : public QObject
{
    Q_OBJECT

private:
    InfoDlg *dialog = nullptr;
    QWidget *window = nullptr;
    QLineEdit *line = nullptr;
    QPushButton *button = nullptr;

    // Presses keys by their captions' meaning: digits, ".", "C", "<" (back),
    // "+-*/=", "%" and "s" (sign change).
    void press(const QString &keys)
    {
        static const QString order = QStringLiteral("0123456789.<C+-*/=%s");
        for (const QChar key : keys) {
            const int index = int(order.indexOf(key));
            QVERIFY2(index >= 0, "unknown key");
            QTest::mouseClick(dialog->NumKeys[index], Qt::LeftButton);
        }
    }

    QString display() const { return dialog->DisplayDigit->text(); }

private slots:
    void initTestCase()
    {
        Globals::InstallPath = QStringLiteral(LANTERN_PROGRAM_DIR);
        dialog = new InfoDlg;
        dialog->Begin(InfoDlg::CalculatorMode);
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        window = new QWidget;
        auto *layout = new QVBoxLayout(window);
        line = new QLineEdit;
        button = new QPushButton(QStringLiteral("x"));
        button->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(line);
        layout->addWidget(button);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    void cleanupTestCase()
    {
        delete dialog;
        delete window;
    }

    void init()
    {
        dialog->setOptions(0);
        press(QStringLiteral("C"));
    }

    void theDisplayShowsTheNumberAndThePendingOperator()
    {
        QCOMPARE(display(), QStringLiteral("0.\r\n"));
        press(QStringLiteral("12"));
        QCOMPARE(display(), QStringLiteral("12.\r\n"));
        press(QStringLiteral("+"));
        QCOMPARE(display(), QStringLiteral("12.\r\n+"));
        press(QStringLiteral("3"));
        QCOMPARE(display(), QStringLiteral("3.\r\n+"));
        press(QStringLiteral("*"));
        QCOMPARE(display(), QStringLiteral("15.\r\n*"));
        press(QStringLiteral("2="));
        QCOMPARE(display(), QStringLiteral("30.\r\n="));
        press(QStringLiteral("1234.5"));
        QCOMPARE(display(), QStringLiteral("1,234.5\r\n="));
    }

    void percentIsAppendedToTheDisplay()
    {
        press(QStringLiteral("200+10%"));
        QCOMPARE(display(), QStringLiteral("10.\r\n+10%"));
        press(QStringLiteral("="));
        QCOMPARE(display(), QStringLiteral("200.1\r\n="));
        press(QStringLiteral("C5%"));
        QCOMPARE(display(), QStringLiteral("5.\r\n5%"));
    }

    void errorsShowE()
    {
        press(QStringLiteral("5/0="));
        QCOMPARE(display(), QStringLiteral("E\r\n"));
        press(QStringLiteral("C12<3"));
        QCOMPARE(display(), QStringLiteral("E\r\n"));
        press(QStringLiteral("C7"));
        QCOMPARE(display(), QStringLiteral("7.\r\n"));
    }

    void signChangeCarriesOutThePendingOperationFirst()
    {
        press(QStringLiteral("5s"));
        QCOMPARE(display(), QStringLiteral("-5.\r\n"));
        press(QStringLiteral("C10+3s"));
        QCOMPARE(display(), QStringLiteral("-13.\r\n"));
        QCOMPARE(dialog->calculator().Operator(), QStringLiteral("="));
        press(QStringLiteral("+1="));
        QCOMPARE(display(), QStringLiteral("-12.\r\n="));
    }

    void resultsGoToTheFocusedTextControl()
    {
        line->setText(QStringLiteral("old text"));
        line->setFocus();
        QTRY_VERIFY(line->hasFocus());
        press(QStringLiteral("7+"));
        QCOMPARE(line->text(), QStringLiteral("old text"));   // not handed on unless asked
        dialog->setOptions(InfoDlg::TransferResults);
        press(QStringLiteral("1.25="));
        QCOMPARE(line->text(), QStringLiteral("8.25"));
        press(QStringLiteral("s"));
        QCOMPARE(line->text(), QStringLiteral("-8.25"));
    }

    void otherControlsGetTheResultThroughTheHost()
    {
        button->setFocus();
        QTRY_VERIFY(button->hasFocus());
        dialog->setOptions(InfoDlg::TransferResults);
        QList<qint64> amounts;
        auto connection = connect(dialog, &InfoDlg::ResultTransfer, this,
                                  [&amounts](Currency &amount) { amounts << amount.tenThousandths(); });
        press(QStringLiteral("6+4"));
        QCOMPARE(amounts, QList<qint64>({60000}));
        // The sign change hands its result on once, after the whole change.
        press(QStringLiteral("s"));
        disconnect(connection);
        QCOMPARE(amounts, QList<qint64>({60000, -100000}));
    }
};

QTEST_MAIN(TestInfoDlgCalc)
#include "test_infodlgcalc.moc"
