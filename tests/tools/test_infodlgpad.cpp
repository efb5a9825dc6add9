#include "app/SettingsStore.h"
#include "tools/IME.h"
#include "tools/KeypadView.h"
#include "support/FileBytes.h"
#include "support/GoldenRows.h"
#include "support/PadDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

// The input pads driven by mouse clicks, typing into a text edit that keeps
// the focus, with the input method off (no IBus here); and the calculator
// pad with its display and results handed on.
class TestInfoDlgPad : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;
    InfoDlg *dialog = nullptr;

    QString typed() const { return pad->edit->toPlainText(); }

private slots:
    void initTestCase()
    {
        pad = std::make_unique<PadDriver>(QStringLiteral(LANTERN_PROGRAM_DIR), InfoDlg::CharacterMode, 2.0);
        dialog = pad->dialog;
        dialog->Begin(InfoDlg::CalculatorMode);
        QVERIFY(pad->show());
    }

    void init()
    {
        SettingsStore::Reset();
        dialog->Reload();
        dialog->setOptions(0);
        pad->pressCalculator(QStringLiteral("C"));
        pad->focus(pad->edit);
    }

    void theDialogFloatsAndNeverTakesTheFocus()
    {
        const Qt::WindowFlags floating = Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;
        QCOMPARE(dialog->windowFlags() & floating, floating);
        QVERIFY(dialog->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(dialog->MiniChannels.size(), 22);
        for (QAbstractButton *button : dialog->MiniChannels)
            QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        pad->clickKeys(KeyTable::Hiragana, {{1, 1}});
        pad->clickButton(10);
        QCOMPARE(QApplication::focusWidget(), pad->edit);
    }

    void keysTypeTheirCharacters_data()
    {
        QTest::addColumn<int>("keypad");
        QTest::addColumn<QList<QPoint>>("cells");
        QTest::addColumn<QString>("text");
        // に ほ ん ご: the na, ha, wa and voiced ka lines of the table.
        QTest::newRow("hiragana") << 12 << QList<QPoint>{{5, 2}, {6, 5}, {10, 3}, {11, 5}, {16, 1}, {17, 4}, {18, 2}}
                                  << QStringLiteral("にほんごぁっ。");
        QTest::newRow("alphabet half-width") << 11 << QList<QPoint>{{1, 1}, {13, 4}, {17, 1}, {2, 5}} << "Az7.";
        QTest::newRow("katakana") << 13 << QList<QPoint>{{1, 1}, {11, 1}, {17, 5}} << QStringLiteral("アガヴ");
        QTest::newRow("symbol 1") << 14 << QList<QPoint>{{1, 1}} << QStringLiteral("、");
        QTest::newRow("symbol 2") << 15 << QList<QPoint>{{1, 1}} << QStringLiteral("①");
        QTest::newRow("number pad unchanged") << 0 << QList<QPoint>{{1, 1}, {2, 4}, {4, 3}, {3, 3}, {4, 1}, {4, 5}, {2, 2}}
                                              << "700+\n5";
        QTest::newRow("cell without a key") << 11 << QList<QPoint>{{20, 5}} << "";
    }

    void keysTypeTheirCharacters()
    {
        QFETCH(int, keypad);
        QFETCH(QList<QPoint>, cells);
        QFETCH(QString, text);
        pad->clickKeys(keypad, cells);
        QCOMPARE(typed(), text);
    }

    // Pixels in the pad's own units: 30-pixel keys, the first 10 from the
    // edge; the alphabet has a gap at column 16, the number pad 4 columns.
    void cellsUnderTheMouse()
    {
        // clang-format off
        const struct { int pad; QPoint at; bool valid; QPoint cell; } cases[] = {
            {11, {459, 10}, true, {15, 1}}, {11, {460, 10}, false, {16, 1}}, {11, {490, 10}, true, {17, 1}},
            {12, {460, 10}, true, {16, 1}}, {12, {609, 159}, true, {20, 5}}, {12, {610, 10}, false, {21, 1}},
            {14, {20, 160}, false, {1, 6}}, {0, {129, 159}, true, {4, 5}}, {0, {130, 10}, false, {5, 1}},
        };
        // clang-format on
        for (const auto &[keypad, at, valid, cell] : cases) {
            int column = 0, row = 0;
            const bool found = InfoDlg::cellAt(keypad, at.x(), at.y(), column, row);
            QCOMPARE(std::tuple(keypad, at, found, QPoint(column, row)), std::tuple(keypad, at, valid, cell));
        }
    }

    void theUsersKeySettingsReplaceTheInstalledTable()
    {
        const QString section = QStringLiteral("Key Settings");
        SettingsStore::put(section, QStringLiteral("Hiragana,1,1"), QStringLiteral("か"));
        SettingsStore::put(section, QStringLiteral("Romaji,1,1"), QStringLiteral("ka"));
        dialog->Reload();
        // Cells the user left out have no key.
        pad->clickKeys(KeyTable::Hiragana, {{1, 1}, {5, 2}});
        QCOMPARE(typed(), QStringLiteral("か"));
        QCOMPARE(dialog->keyTable().romaji(1, 1), QStringLiteral("ka"));
    }

    void keyCheckMayChangeTheText()
    {
        QList<QVariant> seen;
        auto connection = connect(dialog, &InfoDlg::KeyCheck, this, [&](qint32 &status, qint32 &which, QString &text) {
            seen = {status, which, text};
            text = QStringLiteral("ネ"); // converted afterwards, as any key text
        });
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}});
        disconnect(connection);
        // The first value is the input method's status, which the document's
        // fields act on: 0 with no input method running.
        QCOMPARE(seen, (QList<QVariant>{IME::IMEStatus(), 12, QStringLiteral("に")}));
        QCOMPARE(typed(), QStringLiteral("ね"));
    }

    // The keys each button sends to the focused control, by option 256
    // (arrow keys) and by whether that control is a text control.
    void buttonsSendTheirKeys()
    {
        // clang-format off
        const struct { int index; int options; bool onAButton; const char *keys; } cases[] = {
            {1, 0, false, " "}, {4, 0, false, "{LEFT}"}, {5, 0, false, "{RIGHT}"},
            {6, 0, false, "+{TAB}"}, {6, 256, false, "{UP}"}, {7, 0, false, "{TAB}"}, {7, 256, false, "{DOWN}"},
            {8, 0, false, " "}, {10, 0, false, "~"}, {16, 0, false, "{KANJI}"},
            {17, 0, false, ""},   // convert: not while the input method is off
            {18, 0, false, "{NONCONVERT}"}, {19, 0, false, "{ENTER}"}, {20, 0, false, "{ESC}"},
            {2, 0, false, "{BACKSPACE}"}, {9, 0, true, "^{LEFT}+^{RIGHT}{BACKSPACE}"},
        };
        // clang-format on
        for (const auto &[index, options, onAButton, keys] : cases) {
            dialog->setOptions(options);
            pad->focus(onAButton ? static_cast<QWidget *>(pad->button) : pad->edit, QStringLiteral("ab"));
            SentKeys sent;
            pad->clickButton(index);
            QCOMPARE(std::pair(index, sent.take()), std::pair(index, KeyNotation::parse(QString::fromUtf8(keys))));
            if (index == 16)
                pad->clickButton(16); // the on/off button is a toggle: back to released
        }
    }

    // Delete takes the character at the caret at the start of a text, and
    // the one before it elsewhere.
    void deleteInATextControl()
    {
        // clang-format off
        const struct { QWidget *control; int caret; int button; const char *left; } cases[] = {
            {pad->edit, 0, 2, "bc"}, {pad->edit, 3, 9, "ab"}, {pad->line, 0, 9, "bc"}, {pad->line, 2, 2, "ac"}};
        // clang-format on
        for (const auto &[control, caret, button, left] : cases) {
            pad->focus(control, QStringLiteral("abc"), caret);
            pad->clickButton(button);
            const QString text = control == pad->edit ? typed() : pad->line->text();
            QVERIFY2(text == QLatin1String(left), qPrintable(QStringLiteral("caret %1: %2").arg(caret).arg(text)));
        }
    }

    void textControls()
    {
        QPlainTextEdit plain;
        QComboBox list, editable;
        editable.setEditable(true);
        for (QWidget *control : {(QWidget *)pad->edit, (QWidget *)&plain, (QWidget *)pad->line, (QWidget *)&editable})
            QVERIFY(InfoDlg::isTextControl(control));
        for (QWidget *control : {(QWidget *)&list, (QWidget *)pad->button, (QWidget *)nullptr})
            QVERIFY(!InfoDlg::isTextControl(control));
    }

    void quitAndPadButtons()
    {
        QSignalSpy quit(dialog, &InfoDlg::Quit);
        pad->clickButton(0);
        pad->clickButton(3);
        QCOMPARE(static_cast<QList<QList<QVariant>>>(quit), (QList<QList<QVariant>>{{qint16(0)}, {qint16(1)}}));
        for (qint32 shown = 11; shown <= 15; ++shown) {
            pad->clickButton(shown);
            QCOMPARE(dialog->currentPad(), shown);
            QVERIFY(dialog->MiniChannels[shown]->isChecked());
            for (qint32 other = 11; other <= 15; ++other)
                QCOMPARE(dialog->Keypads[other]->isVisible(), other == shown);
        }
        // With several pads showing, the highest counts.
        dialog->Keypads[12]->show();
        QCOMPARE(dialog->currentPad(), 15);
    }

    void tipsAreExact()
    {
        const QString convert = QStringLiteral("クリックすると、入力した かな を漢字に変換します。\n繰り返しクリックすると、次の候補になります。");
        const QString remove = QStringLiteral("クリックすると、指定した場所にある文字を削除します。");
        const QList<std::pair<int, QString>> tips = {
            {0, QStringLiteral("クリックすると、[文字入力] ダイアログを閉じます。")},
            // clang-format off
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
        // clang-format on
        for (const auto &[index, text] : tips) {
            QCOMPARE(InfoDlg::tip(index), text);
            QCOMPARE(dialog->MiniChannels[index]->toolTip(), text);
        }
    }

    void keysAreDrawnAtTheScaleAndLightWhilePressed()
    {
        KeypadView *hiragana = dialog->Keypads[12];
        QCOMPARE(hiragana->sizeHint(), QSize(2 * 620, 2 * 170));
        QCOMPARE(dialog->Numpad->sizeHint(), QSize(2 * 140, 2 * 170));
        dialog->setPad(KeyTable::Hiragana);
        const QImage before = hiragana->grab().toImage();
        QTest::mousePress(hiragana, Qt::LeftButton, {}, PadDriver::cellCentre(1, 1) * 2);
        const QImage pressed = hiragana->grab().toImage();
        QTest::mouseRelease(hiragana, Qt::LeftButton, {}, PadDriver::cellCentre(1, 1) * 2);
        QVERIFY(pressed != before);
        QCOMPARE(hiragana->grab().toImage(), before);
    }
    // The calculator pad: every <case>.keys in tests/data/infodlgpad holds
    // its keys (digits, ".", "<" back, "C", "+-*/=", "%" and "s" the sign
    // change), <case>.txt beside it the display's two lines after them.
    void theDisplay_data() { addGoldenRows(QStringLiteral("infodlgpad"), QStringLiteral("keys")); }

    void theDisplay()
    {
        QFETCH(QString, file);
        pad->pressCalculator(QString::fromUtf8(fileBytes(file)).trimmed());
        const QStringList display = QString::fromUtf8(fileBytes(goldenBeside(file, QStringLiteral("txt")))).split(u'\n');
        QCOMPARE(pad->dialog->DisplayDigit->text(), display.value(0) + QStringLiteral("\r\n") + display.value(1));
    }

    void resultsAreHandedOnToTheFocusedControl()
    {
        pad->focus(pad->line, QStringLiteral("old text"));
        pad->pressCalculator(QStringLiteral("7+"));
        QCOMPARE(pad->line->text(), QStringLiteral("old text")); // not handed on unless asked
        pad->dialog->setOptions(InfoDlg::TransferResults);
        pad->pressCalculator(QStringLiteral("1.25="));
        QCOMPARE(pad->line->text(), QStringLiteral("8.25"));
        pad->pressCalculator(QStringLiteral("s"));
        QCOMPARE(pad->line->text(), QStringLiteral("-8.25"));

        // Other controls get the result through the host.
        pad->focus(pad->button);
        pad->pressCalculator(QStringLiteral("C"));
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

QTEST_MAIN(TestInfoDlgPad)
#include "test_infodlgpad.moc"
