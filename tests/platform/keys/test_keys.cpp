#include "platform/keys/KeyNotation.h"
#include "platform/keys/KeySender.h"

#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The key-sending notation as the pads and the input method bridge write it,
// and the keys typed through the routine, which reach the focused widget as
// from the keyboard, in order, without moving the focus.
class TestKeys : public QObject
{
    Q_OBJECT

private:
    QWidget window;
    QTextEdit *edit = nullptr;
    QLineEdit *line = nullptr;

    void typeAndWait(const QString &keys)
    {
        KeySender::send(keys);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

private slots:
    void initTestCase()
    {
        auto *layout = new QVBoxLayout(&window);
        edit = new QTextEdit;
        line = new QLineEdit;
        layout->addWidget(edit);
        layout->addWidget(line);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void init()
    {
        edit->clear();
        edit->setFocus();
        QTRY_VERIFY(edit->hasFocus());
    }

    void typedTextArrives_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::newRow("editing keys") << "abc{LEFT}{BACKSPACE}X~y" << "aX\nyc";
        QTest::newRow("shift selects") << "one two{HOME}+{END}Z" << "Z";
        QTest::newRow("braced characters") << "{+}{^}{~}{{}{}}{*}+a" << "+^~{}*A";
        QTest::newRow("characters without a key") << "Ａにほんご" << "Ａにほんご";
    }

    void typedTextArrives()
    {
        QFETCH(QString, keys);
        typeAndWait(keys);
        QTEST(edit->toPlainText(), "text");
    }

    void tabKeysMoveTheFocusLikeTheKeyboard()
    {
        edit->setTabChangesFocus(true);
        typeAndWait(QStringLiteral("{TAB}q"));
        QVERIFY(line->hasFocus());
        QCOMPARE(line->text(), QStringLiteral("q"));
        typeAndWait(QStringLiteral("+{TAB}"));
        QVERIFY(edit->hasFocus());
        edit->setTabChangesFocus(false);
        line->clear();
    }

    // Single strokes: plain and shifted characters as typed on the keyboard,
    // "~", braced characters, and every named key with its aliases; "+" holds
    // Shift and "^" Ctrl for the next key only.
    void singleStrokes_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("key");
        QTest::addColumn<uint>("keysym");
        QTest::addColumn<uint>("keycode");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<uint>("native");
        QTest::newRow("a") << "a" << int(Qt::Key_A) << 0x61u << 38u << 0 << 0u;
        QTest::newRow("1") << "1" << int(Qt::Key_1) << 0x31u << 10u << 0 << 0u;
        QTest::newRow("blank") << " " << int(Qt::Key_Space) << 0x20u << 65u << 0 << 0u;
        QTest::newRow("A needs Shift") << "A" << int(Qt::Key_A) << 0x41u << 38u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("+a") << "+a" << int(Qt::Key_A) << 0x41u << 38u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("+1") << "+1" << int(Qt::Key_Exclam) << 0x21u << 10u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("~") << "~" << int(Qt::Key_Return) << 0xff0du << 36u << 0 << 0u;
        QTest::newRow("+{TAB}") << "+{TAB}" << int(Qt::Key_Backtab) << 0xfe20u << 23u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("LEFT") << "{LEFT}" << int(Qt::Key_Left) << 0xff51u << 113u << 0 << 0u;
        QTest::newRow("RIGHT") << "{RIGHT}" << int(Qt::Key_Right) << 0xff53u << 114u << 0 << 0u;
        QTest::newRow("UP") << "{UP}" << int(Qt::Key_Up) << 0xff52u << 111u << 0 << 0u;
        QTest::newRow("DOWN") << "{DOWN}" << int(Qt::Key_Down) << 0xff54u << 116u << 0 << 0u;
        QTest::newRow("TAB") << "{TAB}" << int(Qt::Key_Tab) << 0xff09u << 23u << 0 << 0u;
        QTest::newRow("ENTER") << "{ENTER}" << int(Qt::Key_Return) << 0xff0du << 36u << 0 << 0u;
        QTest::newRow("ESC") << "{ESC}" << int(Qt::Key_Escape) << 0xff1bu << 9u << 0 << 0u;
        QTest::newRow("ESCAPE") << "{ESCAPE}" << int(Qt::Key_Escape) << 0xff1bu << 9u << 0 << 0u;
        QTest::newRow("BS") << "{BS}" << int(Qt::Key_Backspace) << 0xff08u << 22u << 0 << 0u;
        QTest::newRow("DEL") << "{DEL}" << int(Qt::Key_Delete) << 0xffffu << 119u << 0 << 0u;
        QTest::newRow("DELETE") << "{DELETE}" << int(Qt::Key_Delete) << 0xffffu << 119u << 0 << 0u;
        QTest::newRow("INS") << "{INS}" << int(Qt::Key_Insert) << 0xff63u << 118u << 0 << 0u;
        QTest::newRow("HOME") << "{HOME}" << int(Qt::Key_Home) << 0xff50u << 110u << 0 << 0u;
        QTest::newRow("END") << "{END}" << int(Qt::Key_End) << 0xff57u << 115u << 0 << 0u;
        QTest::newRow("CAPSLOCK") << "{CAPSLOCK}" << int(Qt::Key_CapsLock) << 0xffe5u << 66u << 0 << 0u;
        QTest::newRow("PRTSC") << "{PRTSC}" << int(Qt::Key_Print) << 0xff61u << 107u << 0 << 0u;
        QTest::newRow("KANJI") << "{KANJI}" << int(Qt::Key_Zenkaku_Hankaku) << 0xff2au << 49u << 0 << 0u;
        QTest::newRow("CONVERT") << "{CONVERT}" << int(Qt::Key_Henkan) << 0xff23u << 100u << 0 << 0u;
        QTest::newRow("NONCONVERT") << "{NONCONVERT}" << int(Qt::Key_Muhenkan) << 0xff22u << 102u << 0 << 0u;
        QTest::newRow("KANA") << "{KANA}" << int(Qt::Key_Hiragana_Katakana) << 0xff27u << 101u << 0 << 0u;
        QTest::newRow("{+} is Shift and =") << "{+}" << int(Qt::Key_Plus) << 0x2bu << 21u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("{~}") << "{~}" << int(Qt::Key_AsciiTilde) << 0x7eu << 49u << int(Qt::ShiftModifier) << 1u;
        QTest::newRow("^{LEFT}") << "^{LEFT}" << int(Qt::Key_Left) << 0xff51u << 113u << int(Qt::ControlModifier) << 4u;
        QTest::newRow("+^{RIGHT}") << "+^{RIGHT}" << int(Qt::Key_Right) << 0xff53u << 114u
                                   << int(Qt::ShiftModifier | Qt::ControlModifier) << 5u;
        // Characters that no key types go as text with a Unicode keysym.
        QTest::newRow("full-width A") << u"Ａ"_qs << 0xff21 << 0x0100ff21u << 0u << 0 << 0u;
        QTest::newRow("hiragana") << u"に"_qs << 0x306b << 0x0100306bu << 0u << 0 << 0u;
        QTest::newRow("beyond 16 bits") << u"𠮷"_qs << 0x20bb7 << 0x01020bb7u << 0u << 0 << 0u;
        QTest::newRow("lower case") << "{enter}" << int(Qt::Key_Return) << 0xff0du << 36u << 0 << 0u;
    }

    void singleStrokes()
    {
        QFETCH(QString, keys);
        const QList<KeyStroke> strokes = KeyNotation::parse(keys);
        QCOMPARE(strokes.size(), 1);
        QTEST(strokes[0].key, "key");
        QTEST(strokes[0].keysym, "keysym");
        QTEST(strokes[0].keycode, "keycode");
        QTEST(int(strokes[0].modifiers), "modifiers");
        QTEST(strokes[0].nativeModifiers(), "native");
    }

    void repeatCount()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("{LEFT 3}x{BACKSPACE}"));
        QCOMPARE(strokes.size(), 5);
        QCOMPARE(strokes[2].key, int(Qt::Key_Left));
        QCOMPARE(strokes[3].text, QStringLiteral("x"));
        // A prefix holds for one key: what follows is plain again.
        QCOMPARE(KeyNotation::parse(QStringLiteral("+^{RIGHT}{BACKSPACE}")).last().modifiers, Qt::NoModifier);
    }

    void damagedStringsAreSkippedNotFatal()
    {
        QCOMPARE(KeyNotation::parse(QStringLiteral("{NOSUCHKEY}x")).size(), 1);
        QCOMPARE(KeyNotation::parse(QStringLiteral("x{LEFT")).size(), 1);
        QCOMPARE(KeyNotation::parse(QStringLiteral("+^")).size(), 0);
        QCOMPARE(KeyNotation::parse(QString()).size(), 0);
    }
};

QTEST_MAIN(TestKeys)
#include "test_keys.moc"
