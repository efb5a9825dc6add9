#include "app/Globals.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "tools/KeypadView.h"
#include "support/IBusSession.h"
#include "support/PreeditWatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QTextEdit>
#include <QWindow>

// Typing Japanese with the mouse alone: real clicks (xdotool on the X
// display) on the input pad, the real IBus with Mozc composing and
// converting, and a text edit in another window that keeps the focus.
class TestPadTyping : public QObject
{
    Q_OBJECT

private:
    InfoDlg *dialog = nullptr;
    QTextEdit *edit = nullptr;
    PreeditWatcher *preedit = nullptr;

    // A click of the real mouse, as the user gives it.
    static void click(QWidget *widget, QPoint local)
    {
        const QPoint at = widget->mapToGlobal(local);
        const QString xdotool = QStandardPaths::findExecutable(QStringLiteral("xdotool"));
        if (xdotool.isEmpty()) {
            QTest::mouseClick(widget, Qt::LeftButton, {}, local);
            return;
        }
        QProcess::execute(xdotool, {QStringLiteral("mousemove"), QString::number(at.x()),
                                    QString::number(at.y()), QStringLiteral("click"), QStringLiteral("1")});
        // Let the click arrive before the next one.
        QTest::qWait(30);
    }

    void clickButton(int index)
    {
        QAbstractButton *button = dialog->MiniChannels[index];
        click(button, button->rect().center());
    }

    void clickKeys(qint32 pad, const QList<QPoint> &cells)
    {
        KeypadView *view = dialog->Keypads[pad];
        for (const QPoint &cell : cells)
            click(view, QPoint(qRound(((cell.x() - 1) * 30 + 25) * dialog->padScale()),
                               qRound(((cell.y() - 1) * 30 + 25) * dialog->padScale())));
    }

    void verifyFocusStayed()
    {
        QCOMPARE(QApplication::focusWidget(), edit);
        QCOMPARE(QGuiApplication::focusWindow(), edit->windowHandle());
    }

private slots:
    void initTestCase()
    {
        if (!IBusSession::available())
            QSKIP("needs the IBus session with Mozc");
        Globals::InstallPath = QStringLiteral(LANTERN_PROGRAM_DIR);
        dialog = new InfoDlg;
        dialog->setPadScale(1.5);
        dialog->move(0, 320);
        dialog->Begin(InfoDlg::CharacterMode);
        QVERIFY(QTest::qWaitForWindowExposed(dialog));

        edit = new QTextEdit;
        preedit = new PreeditWatcher(edit);
        edit->setGeometry(0, 0, 600, 260);
        edit->show();
        edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(edit));
        edit->setFocus();
        QTRY_COMPARE_WITH_TIMEOUT(IME::IMEStatus(), 0, 5000);
        QTRY_VERIFY(!dialog->MiniChannels[16]->isChecked());
    }

    void cleanupTestCase()
    {
        delete dialog;
        delete edit;
    }

    void hiraganaKeysComposeAndConvertToKanji()
    {
        clickButton(16);
        QTRY_COMPARE(IME::IMEStatus(), 4);
        QTRY_VERIFY(dialog->MiniChannels[16]->isChecked());
        clickButton(12);
        // Each key tells its host the input method's mode, which a title
        // field of the document follows.
        QList<qint32> statuses;
        auto watch = connect(dialog, &InfoDlg::KeyCheck, this,
                             [&statuses](qint32 &status, qint32 &, QString &) { statuses.append(status); });
        clickKeys(KeyTable::Hiragana, {{1, 1}});
        disconnect(watch);
        QCOMPARE(statuses, QList<qint32>{4});
        clickButton(20);
        QTRY_COMPARE(preedit->preedit(), QString());
        clickKeys(KeyTable::Hiragana, {{5, 2}, {6, 5}, {10, 3}, {11, 5}});   // に ほ ん ご
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("にほんご"));
        QCOMPARE(edit->toPlainText(), QString());
        clickButton(17);   // convert
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("日本語"));
        clickButton(19);   // apply
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語"));
        verifyFocusStayed();
    }

    void alphabetTypesFullWidthWithTheInputMethodOn()
    {
        clickButton(11);
        clickKeys(KeyTable::Alpha, {{1, 1}, {13, 4}, {17, 1}});
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語Ａｚ７"));
    }

    void spaceConvertsAndCancelGoesBack()
    {
        clickButton(12);
        clickKeys(KeyTable::Hiragana, {{2, 1}, {10, 3}, {12, 2}});   // か ん じ
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("かんじ"));
        clickButton(1);    // space converts
        QTRY_VERIFY(preedit->preedit() != QStringLiteral("かんじ") && !preedit->preedit().isEmpty());
        const QString first = preedit->preedit();
        clickButton(1);    // and gives the next candidate
        QTRY_VERIFY(preedit->preedit() != first && !preedit->preedit().isEmpty());
        clickButton(20);   // cancel the conversion: the kana again
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("かんじ"));
        clickButton(20);   // and the composition
        QTRY_COMPARE(preedit->preedit(), QString());
        QCOMPARE(edit->toPlainText(), QStringLiteral("日本語Ａｚ７"));
    }

    // A key without romaji types its kana as they are, after what was composed.
    void keysWithoutRomajiFollowTheComposition()
    {
        clickKeys(KeyTable::Hiragana, {{5, 2}});
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("に"));
        clickKeys(KeyTable::Hiragana, {{20, 3}});   // 『
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語Ａｚ７に『"));
        QCOMPARE(preedit->preedit(), QString());
    }

    void offAgainTheKanaAreTypedDirectly()
    {
        clickButton(16);
        QTRY_COMPARE(IME::IMEStatus(), 0);
        QTRY_VERIFY(!dialog->MiniChannels[16]->isChecked());
        clickKeys(KeyTable::Hiragana, {{5, 2}});
        clickButton(11);
        clickKeys(KeyTable::Alpha, {{1, 1}});
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語Ａｚ７に『にA"));
        verifyFocusStayed();
    }
};

LANTERN_IBUS_TEST_MAIN(TestPadTyping)
#include "test_padtyping.moc"
