#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "tools/KeypadView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The character-input pad driven by mouse clicks, typing into a text edit
// that keeps the focus, with the input method off (offscreen, no IBus).
class TestInfoDlgPad : public QObject
{
    Q_OBJECT

private:
    InfoDlg *dialog = nullptr;
    QWidget *window = nullptr;
    QTextEdit *edit = nullptr;
    QLineEdit *line = nullptr;

    static QPoint cellCentre(int column, int row)
    {
        return QPoint((column - 1) * 30 + 10 + 15, (row - 1) * 30 + 10 + 15);
    }

    KeypadView *view(qint32 pad) const
    {
        return pad == 0 ? dialog->Numpad : dialog->Keypads[pad];
    }

    // A click at a position given in the pad's own 30-pixel units.
    void clickAt(qint32 pad, QPoint at)
    {
        const double scale = dialog->padScale();
        QTest::mouseClick(view(pad), Qt::LeftButton, {}, QPoint(qRound(at.x() * scale), qRound(at.y() * scale)));
    }

    void clickKeys(qint32 pad, const QList<QPoint> &cells)
    {
        if (pad != 0)
            dialog->MiniChannels_Click(pad);
        for (const QPoint &cell : cells)
            clickAt(pad, cellCentre(cell.x(), cell.y()));
        settle();
    }

    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    void focusEdit(const QString &text = QString())
    {
        edit->setPlainText(text);
        edit->moveCursor(QTextCursor::End);
        edit->setFocus();
        QTRY_VERIFY(edit->hasFocus());
    }

private slots:
    void initTestCase()
    {
        Globals::InstallPath = QStringLiteral(LANTERN_PROGRAM_DIR);
        dialog = new InfoDlg;
        dialog->setPadScale(2.0);
        dialog->Begin(InfoDlg::CharacterMode);
        QVERIFY(QTest::qWaitForWindowExposed(dialog));

        window = new QWidget;
        auto *layout = new QVBoxLayout(window);
        edit = new QTextEdit;
        line = new QLineEdit;
        layout->addWidget(edit);
        layout->addWidget(line);
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
        SettingsStore::Reset();
        dialog->Reload();
        dialog->setOptions(0);
        focusEdit();
    }

    void theDialogFloatsAndNeverTakesTheFocus()
    {
        QVERIFY(dialog->windowFlags() & Qt::Tool);
        QVERIFY(dialog->windowFlags() & Qt::WindowStaysOnTopHint);
        QVERIFY(dialog->windowFlags() & Qt::WindowDoesNotAcceptFocus);
        QVERIFY(dialog->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(dialog->MiniChannels.size(), 21);
        for (QAbstractButton *button : dialog->MiniChannels)
            QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        clickKeys(KeyTable::Hiragana, {{1, 1}});
        dialog->MiniChannels_Click(10);
        settle();
        QVERIFY(edit->hasFocus());
        QCOMPARE(QApplication::focusWidget(), edit);
    }

    void hiraganaKeysTypeKanaWithTheInputMethodOff()
    {
        // に ほ ん ご: the na, ha, wa and voiced ka lines of the table.
        clickKeys(KeyTable::Hiragana, {{5, 2}, {6, 5}, {10, 3}, {11, 5}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("にほんご"));
        clickKeys(KeyTable::Hiragana, {{16, 1}, {17, 4}, {18, 2}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("にほんごぁっ。"));
    }

    void otherPadsTypeTheirCharacters()
    {
        clickKeys(KeyTable::Alpha, {{1, 1}, {13, 4}, {17, 1}, {2, 5}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("Az7."));   // half-width with the input method off
        clickKeys(KeyTable::Katakana, {{1, 1}, {11, 1}, {17, 5}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("Az7.アガヴ"));
        clickKeys(KeyTable::Symbol1, {{1, 1}});
        clickKeys(KeyTable::Symbol2, {{1, 1}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("Az7.アガヴ、①"));
    }

    void numberPadSendsItsKeysUnchanged()
    {
        clickKeys(KeyTable::Number, {{1, 1}, {2, 4}, {4, 3}, {3, 3}, {4, 1}, {4, 5}, {2, 2}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("700+\n5"));
    }

    void pressesOnNoKeySelectNothing()
    {
        focusEdit(QStringLiteral("x"));
        dialog->MiniChannels_Click(KeyTable::Alpha);
        clickAt(KeyTable::Alpha, cellCentre(16, 2));              // the gap column
        clickAt(KeyTable::Alpha, cellCentre(1, 1) + QPoint(0, 5 * 30));   // row 6
        clickAt(KeyTable::Alpha, cellCentre(20, 5));              // a cell without a key
        clickAt(KeyTable::Number, cellCentre(5, 1));
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("x"));

        int column = 0, row = 0;
        QVERIFY(InfoDlg::cellAt(KeyTable::Alpha, 10 + 15 * 30 - 1, 10, column, row));
        QCOMPARE(column, 15);
        QVERIFY(!InfoDlg::cellAt(KeyTable::Alpha, 10 + 15 * 30, 10, column, row));
        QCOMPARE(column, 16);
        QVERIFY(InfoDlg::cellAt(KeyTable::Alpha, 10 + 16 * 30, 10, column, row));
        QCOMPARE(column, 17);
        QVERIFY(InfoDlg::cellAt(KeyTable::Hiragana, 10 + 15 * 30, 10, column, row));
        QVERIFY(!InfoDlg::cellAt(KeyTable::Hiragana, 10 + 20 * 30, 10, column, row));
        QVERIFY(!InfoDlg::cellAt(KeyTable::Symbol1, 20, 10 + 5 * 30, column, row));
        QCOMPARE(row, 6);
        QVERIFY(InfoDlg::cellAt(KeyTable::Number, 10 + 4 * 30 - 1, 10 + 5 * 30 - 1, column, row));
        QCOMPARE(QPoint(column, row), QPoint(4, 5));
        QVERIFY(!InfoDlg::cellAt(KeyTable::Number, 10 + 4 * 30, 10, column, row));
    }

    void theUsersKeySettingsReplaceTheInstalledTable()
    {
        SettingsStore::put(QStringLiteral("Key Settings"), QStringLiteral("Hiragana,1,1"), QStringLiteral("か"));
        SettingsStore::put(QStringLiteral("Key Settings"), QStringLiteral("Hiragana,1,01"), QStringLiteral("さ"));
        SettingsStore::put(QStringLiteral("Key Settings"), QStringLiteral("Romaji,1,1"), QStringLiteral("ka"));
        dialog->Reload();
        // The first record of a cell wins; cells the user left out have no key.
        clickKeys(KeyTable::Hiragana, {{1, 1}, {5, 2}});
        QCOMPARE(edit->toPlainText(), QStringLiteral("か"));
        QCOMPARE(dialog->keyTable().romaji(1, 1), QStringLiteral("ka"));
        QCOMPARE(dialog->keyTable().records().size(), 2);
    }

    void keyCheckMayChangeTheText()
    {
        qint32 seenStatus = -1, seenPad = -1;
        QString seenText;
        auto connection = connect(dialog, &InfoDlg::KeyCheck, this,
                                  [&](qint32 &status, qint32 &pad, QString &text) {
                                      seenStatus = status;
                                      seenPad = pad;
                                      seenText = text;
                                      text = QStringLiteral("ネ");   // converted afterwards, as any key text
                                  });
        clickKeys(KeyTable::Hiragana, {{5, 2}});
        disconnect(connection);
        // The first value is what the document's fields act on: the input
        // method's status, 0 here with no input method running.
        QCOMPARE(seenStatus, IME::IMEStatus());
        QCOMPARE(seenPad, 12);
        QCOMPARE(seenText, QStringLiteral("に"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("ね"));
    }

    void deleteTakesTheFirstCharacterAtTheStart()
    {
        focusEdit(QStringLiteral("abc"));
        edit->moveCursor(QTextCursor::Start);
        dialog->MiniChannels_Click(2);
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("bc"));
        edit->moveCursor(QTextCursor::End);
        dialog->MiniChannels_Click(9);
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("b"));

        line->setText(QStringLiteral("xyz"));
        line->setFocus();
        QTRY_VERIFY(line->hasFocus());
        line->setCursorPosition(0);
        dialog->MiniChannels_Click(2);
        settle();
        QCOMPARE(line->text(), QStringLiteral("yz"));
    }

    void textControls()
    {
        QTextEdit rich;
        QPlainTextEdit plain;
        QLineEdit single;
        QComboBox list, editable;
        editable.setEditable(true);
        QPushButton button;
        QVERIFY(InfoDlg::isTextControl(&rich));
        QVERIFY(InfoDlg::isTextControl(&plain));
        QVERIFY(InfoDlg::isTextControl(&single));
        QVERIFY(InfoDlg::isTextControl(&editable));
        QVERIFY(!InfoDlg::isTextControl(&list));
        QVERIFY(!InfoDlg::isTextControl(&button));
        QVERIFY(!InfoDlg::isTextControl(nullptr));
    }

    void commandButtonsSendTheirKeys()
    {
        focusEdit(QStringLiteral("ab"));
        dialog->MiniChannels_Click(4);    // left
        dialog->MiniChannels_Click(8);    // blank
        dialog->MiniChannels_Click(5);    // right
        dialog->MiniChannels_Click(10);   // line break
        dialog->MiniChannels_Click(1);    // space
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("a b\n "));
        dialog->setOptions(InfoDlg::ArrowKeys);
        dialog->MiniChannels_Click(6);    // up
        settle();
        QCOMPARE(edit->textCursor().blockNumber(), 0);
        dialog->MiniChannels_Click(7);    // down
        settle();
        QCOMPARE(edit->textCursor().blockNumber(), 1);
        dialog->MiniChannels_Click(19);   // apply: Enter
        dialog->MiniChannels_Click(20);   // cancel: Escape, nothing to cancel
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("a b\n \n"));
        // Without the arrow-key option, up and down walk the controls.
        dialog->setOptions(0);
        line->setFocus();
        QTRY_VERIFY(line->hasFocus());
        dialog->MiniChannels_Click(6);
        settle();
        QVERIFY(edit->hasFocus());
        line->setFocus();
        QTRY_VERIFY(line->hasFocus());
        const QString before = line->text();
        dialog->MiniChannels_Click(7);
        settle();
        QVERIFY(edit->hasFocus());
        QCOMPARE(line->text(), before);
    }

    void quitAndPadButtons()
    {
        QSignalSpy quit(dialog, &InfoDlg::Quit);
        dialog->MiniChannels_Click(0);
        dialog->MiniChannels_Click(3);
        QCOMPARE(quit.size(), 2);
        QCOMPARE(quit.at(0).at(0).value<qint16>(), qint16(0));
        QCOMPARE(quit.at(1).at(0).value<qint16>(), qint16(1));
        for (qint32 pad = 11; pad <= 15; ++pad) {
            QTest::mouseClick(dialog->MiniChannels[pad], Qt::LeftButton);
            QCOMPARE(dialog->currentPad(), pad);
            QVERIFY(dialog->MiniChannels[pad]->isChecked());
            for (qint32 other = 11; other <= 15; ++other)
                QCOMPARE(dialog->Keypads[other]->isVisible(), other == pad);
        }
        // With several pads showing, the highest counts.
        dialog->Keypads[12]->show();
        QCOMPARE(dialog->currentPad(), 15);
        dialog->MiniChannels_Click(12);
        QCOMPARE(dialog->currentPad(), 12);
    }

    void movementButtonsRepeatWhileHeld()
    {
        focusEdit(QStringLiteral("0123456789012345678901234567890123456789"));
        QTest::mousePress(dialog->MiniChannels[4], Qt::LeftButton);
        QTest::qWait(1200);
        QTest::mouseRelease(dialog->MiniChannels[4], Qt::LeftButton);
        settle();
        QVERIFY2(edit->textCursor().position() <= 40 - 5, qPrintable(QString::number(edit->textCursor().position())));
    }

    void tipsAreExact()
    {
        const QString convert = QStringLiteral("クリックすると、入力した かな を漢字に変換します。\n繰り返しクリックすると、次の候補になります。");
        const QString remove = QStringLiteral("クリックすると、指定した場所にある文字を削除します。");
        const QList<std::pair<int, QString>> tips = {
            {0, QStringLiteral("クリックすると、[文字入力] ダイアログを閉じます。")},
            {1, convert}, {2, remove}, {9, remove}, {17, convert},
            {4, QStringLiteral("クリックし続けると、指定した場所よりも左へ移動していきます。")},
            {5, QStringLiteral("クリックし続けると、指定した場所よりも右へ移動していきます。")},
            {6, QStringLiteral("クリックし続けると、指定した場所よりも上へ移動していきます。")},
            {7, QStringLiteral("クリックし続けると、指定した場所よりも下へ移動していきます。")},
            {8, QStringLiteral("クリックすると、指定した場所に空き領域を挿入し、列を区切ります。")},
            {10, QStringLiteral("クリックすると、指定した場所を右端にして折り返し、新しく入力する場所を次の行の左端にします。")},
            {11, QStringLiteral("クリックすると、アルファベット・数字を入力できます。")},
            {12, QStringLiteral("クリックすると、ひらがなを入力できます。")},
            {13, QStringLiteral("クリックすると、カタカナを入力できます。")},
            {14, QStringLiteral("クリックすると、記号を入力できます。")},
            {15, QStringLiteral("クリックすると、記号を入力できます。")},
            {16, QStringLiteral("クリックすると、入力した かな を漢字に変換可能な状態にします。\n再びクリックすると、元に戻り、直接入力可能な状態にします。")},
            {19, QStringLiteral("クリックすると、変換している候補を適用します。")},
            {20, QStringLiteral("クリックすると、変換をキャンセルします。")},
        };
        for (const auto &[index, text] : tips) {
            QCOMPARE(InfoDlg::tip(index), text);
            QCOMPARE(dialog->MiniChannels[index]->toolTip(), text);
        }
    }

    void howToTellsTheTipWhenTheMouseComes()
    {
        Globals::HowToOn = true;
        QSignalSpy howTo(dialog, &InfoDlg::HowTo);
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(dialog->MiniChannels[10], &enter);
        Globals::HowToOn = false;
        QCoreApplication::sendEvent(dialog->MiniChannels[10], &enter);
        QCOMPARE(howTo.size(), 1);
        QCOMPARE(howTo.at(0).at(1).toString(), InfoDlg::tip(10));
    }

    void keysAreButtonsForScreenReaders()
    {
        dialog->MiniChannels_Click(KeyTable::Hiragana);
        QAccessibleInterface *pad = QAccessible::queryAccessibleInterface(dialog->Keypads[KeyTable::Hiragana]);
        QVERIFY(pad);
        QAccessibleInterface *ni = nullptr;
        for (int i = 0; i < pad->childCount(); ++i) {
            QAccessibleInterface *key = pad->child(i);
            QCOMPARE(key->role(), QAccessible::Button);
            QCOMPARE(pad->indexOfChild(key), i);
            if (key->text(QAccessible::Name) == QStringLiteral("に"))
                ni = key;
        }
        QVERIFY(ni);
        QCOMPARE(pad->child(0)->text(QAccessible::Name), QStringLiteral("あ"));
        const QPoint centre = dialog->Keypads[KeyTable::Hiragana]->mapToGlobal(cellCentre(5, 2) * 2);
        QVERIFY(ni->rect().contains(centre));
        QCOMPARE(pad->childAt(centre.x(), centre.y()), ni);
        ni->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        settle();
        QCOMPARE(edit->toPlainText(), QStringLiteral("に"));
    }

    void theKeysAreDrawnLargerThanTheirUnits()
    {
        QCOMPARE(dialog->Keypads[12]->sizeHint(), QSize(2 * 620, 2 * 170));
        QCOMPARE(dialog->Numpad->sizeHint(), QSize(2 * 140, 2 * 170));
        // A press lights its key until the release.
        const QImage before = dialog->Keypads[12]->grab().toImage();
        dialog->MiniChannels_Click(12);
        QTest::mousePress(dialog->Keypads[12], Qt::LeftButton, {}, cellCentre(1, 1) * 2);
        const QImage pressed = dialog->Keypads[12]->grab().toImage();
        QTest::mouseRelease(dialog->Keypads[12], Qt::LeftButton, {}, cellCentre(1, 1) * 2);
        const QImage after = dialog->Keypads[12]->grab().toImage();
        QVERIFY(pressed != before);
        QCOMPARE(after, before);
    }
};

QTEST_MAIN(TestInfoDlgPad)
#include "test_infodlgpad.moc"
