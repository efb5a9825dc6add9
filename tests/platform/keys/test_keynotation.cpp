#include "platform/keys/KeyNotation.h"

#include <QTest>

// The key-sending notation as the pads and the input method bridge write it.
class TestKeyNotation : public QObject
{
    Q_OBJECT

private slots:
    void plainCharactersTypeThemselves()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("a1 "));
        QCOMPARE(strokes.size(), 3);
        QCOMPARE(strokes[0].key, int(Qt::Key_A));
        QCOMPARE(strokes[0].keysym, 0x61u);
        QCOMPARE(strokes[0].keycode, 38u);
        QCOMPARE(strokes[0].text, QStringLiteral("a"));
        QCOMPARE(strokes[0].modifiers, Qt::NoModifier);
        QCOMPARE(strokes[1].keysym, 0x31u);
        QCOMPARE(strokes[1].keycode, 10u);
        QCOMPARE(strokes[2].key, int(Qt::Key_Space));
        QCOMPARE(strokes[2].keycode, 65u);
    }

    // Characters that need Shift on the keyboard carry it, as typed there.
    void shiftedCharactersAndShiftPrefix()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("A+a+1"));
        QCOMPARE(strokes.size(), 3);
        for (const KeyStroke &s : strokes.first(2)) {
            QCOMPARE(s.keysym, 0x41u);
            QCOMPARE(s.text, QStringLiteral("A"));
            QCOMPARE(s.modifiers, Qt::ShiftModifier);
            QCOMPARE(s.nativeModifiers(), 1u);
        }
        QCOMPARE(strokes[2].text, QStringLiteral("!"));
    }

    void prefixesHoldForTheNextKeyOnly()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("^{LEFT}+^{RIGHT}{BACKSPACE}"));
        QCOMPARE(strokes.size(), 3);
        QCOMPARE(strokes[0].key, int(Qt::Key_Left));
        QCOMPARE(strokes[0].modifiers, Qt::ControlModifier);
        QCOMPARE(strokes[1].key, int(Qt::Key_Right));
        QCOMPARE(strokes[1].modifiers, Qt::ShiftModifier | Qt::ControlModifier);
        QCOMPARE(strokes[1].nativeModifiers(), 5u);
        QCOMPARE(strokes[2].key, int(Qt::Key_Backspace));
        QCOMPARE(strokes[2].modifiers, Qt::NoModifier);

        const QList<KeyStroke> backTab = KeyNotation::parse(QStringLiteral("+{TAB}"));
        QCOMPARE(backTab.size(), 1);
        QCOMPARE(backTab[0].key, int(Qt::Key_Backtab));
        QCOMPARE(backTab[0].keysym, 0xfe20u);
    }

    void tildeIsEnterAndBracedCharactersAreLiteral()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("~{+}{^}{~}{{}{}}{*}{%}"));
        QCOMPARE(strokes.size(), 8);
        QCOMPARE(strokes[0].key, int(Qt::Key_Return));
        QCOMPARE(strokes[0].keysym, 0xff0du);
        QString text;
        for (const KeyStroke &s : strokes.mid(1))
            text += s.text;
        QCOMPARE(text, QStringLiteral("+^~{}*%"));
        QCOMPARE(strokes[1].modifiers, Qt::ShiftModifier);   // "+" is Shift+= on the keyboard
    }

    void namedKeysAndTheirAliases_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("key");
        QTest::addColumn<uint>("keysym");
        QTest::addColumn<uint>("keycode");
        QTest::newRow("LEFT") << "{LEFT}" << int(Qt::Key_Left) << 0xff51u << 113u;
        QTest::newRow("RIGHT") << "{RIGHT}" << int(Qt::Key_Right) << 0xff53u << 114u;
        QTest::newRow("UP") << "{UP}" << int(Qt::Key_Up) << 0xff52u << 111u;
        QTest::newRow("DOWN") << "{DOWN}" << int(Qt::Key_Down) << 0xff54u << 116u;
        QTest::newRow("TAB") << "{TAB}" << int(Qt::Key_Tab) << 0xff09u << 23u;
        QTest::newRow("ENTER") << "{ENTER}" << int(Qt::Key_Return) << 0xff0du << 36u;
        QTest::newRow("ESC") << "{ESC}" << int(Qt::Key_Escape) << 0xff1bu << 9u;
        QTest::newRow("ESCAPE") << "{ESCAPE}" << int(Qt::Key_Escape) << 0xff1bu << 9u;
        QTest::newRow("BS") << "{BS}" << int(Qt::Key_Backspace) << 0xff08u << 22u;
        QTest::newRow("DEL") << "{DEL}" << int(Qt::Key_Delete) << 0xffffu << 119u;
        QTest::newRow("DELETE") << "{DELETE}" << int(Qt::Key_Delete) << 0xffffu << 119u;
        QTest::newRow("INS") << "{INS}" << int(Qt::Key_Insert) << 0xff63u << 118u;
        QTest::newRow("HOME") << "{HOME}" << int(Qt::Key_Home) << 0xff50u << 110u;
        QTest::newRow("END") << "{END}" << int(Qt::Key_End) << 0xff57u << 115u;
        QTest::newRow("CAPSLOCK") << "{CAPSLOCK}" << int(Qt::Key_CapsLock) << 0xffe5u << 66u;
        QTest::newRow("PRTSC") << "{PRTSC}" << int(Qt::Key_Print) << 0xff61u << 107u;
        QTest::newRow("KANJI") << "{KANJI}" << int(Qt::Key_Zenkaku_Hankaku) << 0xff2au << 49u;
        QTest::newRow("CONVERT") << "{CONVERT}" << int(Qt::Key_Henkan) << 0xff23u << 100u;
        QTest::newRow("NONCONVERT") << "{NONCONVERT}" << int(Qt::Key_Muhenkan) << 0xff22u << 102u;
        QTest::newRow("KANA") << "{KANA}" << int(Qt::Key_Hiragana_Katakana) << 0xff27u << 101u;
        QTest::newRow("lower case") << "{enter}" << int(Qt::Key_Return) << 0xff0du << 36u;
    }

    void namedKeysAndTheirAliases()
    {
        QFETCH(QString, keys);
        const QList<KeyStroke> strokes = KeyNotation::parse(keys);
        QCOMPARE(strokes.size(), 1);
        QTEST(strokes[0].key, "key");
        QTEST(strokes[0].keysym, "keysym");
        QTEST(strokes[0].keycode, "keycode");
    }

    // Characters that no key types go as text with a Unicode keysym.
    void charactersWithoutAKey()
    {
        const QList<KeyStroke> strokes = KeyNotation::parse(QStringLiteral("Ａに𠮷"));
        QCOMPARE(strokes.size(), 3);
        QCOMPARE(strokes[0].keysym, 0x0100ff21u);
        QCOMPARE(strokes[0].keycode, 0u);
        QCOMPARE(strokes[0].text, QStringLiteral("Ａ"));
        QCOMPARE(strokes[1].keysym, 0x0100306bu);
        QCOMPARE(strokes[1].text, QStringLiteral("に"));
        QCOMPARE(strokes[2].text, QStringLiteral("𠮷"));
        QCOMPARE(strokes[2].keysym, 0x01020bb7u);
    }

    // A count repeats a named key; unknown names and cut strings are skipped, never fatal.
    void strokeCounts_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("lefts");
        QTest::addColumn<QString>("texts");
        QTest::newRow("repeat") << "{LEFT 3}x" << 3 << "x";
        QTest::newRow("unknown name") << "{NOSUCHKEY}x" << 0 << "x";
        QTest::newRow("unclosed brace") << "x{LEFT" << 0 << "x";
        QTest::newRow("prefixes alone") << "+^" << 0 << "";
        QTest::newRow("empty") << "" << 0 << "";
    }

    void strokeCounts()
    {
        QFETCH(QString, keys);
        const QList<KeyStroke> strokes = KeyNotation::parse(keys);
        QString texts;
        int lefts = 0;
        for (const KeyStroke &s : strokes) {
            texts += s.text;
            lefts += s.key == Qt::Key_Left;
        }
        QTEST(texts, "texts");
        QTEST(lefts, "lefts");
        QCOMPARE(strokes.size(), lefts + texts.size());
    }
};

QTEST_APPLESS_MAIN(TestKeyNotation)
#include "test_keynotation.moc"
