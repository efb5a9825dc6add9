#include "platform/ime/InputMethodStatus.h"
#include "platform/keys/KeySender.h"
#include "tools/IME.h"
#include "support/IBusSession.h"
#include "support/PreeditWatcher.h"

#include <QApplication>
#include <QTest>
#include <QTextEdit>

// The input-method bridge against the real IBus and Mozc: the on/off key,
// the mode it reports, composing from romaji sent as keys, conversion, the
// last result with its reading, and detaching the input method.
class TestIBusBridge : public QObject
{
    Q_OBJECT

private:
    QTextEdit *edit = nullptr;
    IME *ime = nullptr;
    PreeditWatcher *preedit = nullptr;

private slots:
    void initTestCase()
    {
        if (!IBusSession::available())
            QSKIP("needs the IBus session with Mozc");
        edit = new QTextEdit;
        edit->resize(400, 200);
        preedit = new PreeditWatcher(edit);
        edit->show();
        edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(edit));
        edit->setFocus();
        ime = new IME(this);
        ime->setHandle(edit);
        QVERIFY(ime->Handle() != 0);
        QVERIFY(ime->Layout.startsWith(QStringLiteral("ibus:")));
        QCOMPARE(ime->Description(), QStringLiteral("Mozc"));
        // Mozc starts in direct input and says so once it knows us.
        QTRY_COMPARE_WITH_TIMEOUT(InputMethodStatus::instance().modeSymbol(), QStringLiteral("A"), 5000);
        QCOMPARE(IME::IMEStatus(), 0);
        QVERIFY(!ime->Enabled());
    }

    void cleanupTestCase() { delete edit; }

    void onOffKeyTurnsJapaneseInputOnAndOff()
    {
        ime->KeyPress(IME::KanjiKey, true);
        QCOMPARE(IME::IMEStatus(), 4);
        QVERIFY(ime->Enabled());
        ime->KeyPress(IME::KanjiKey, true);
        QCOMPARE(IME::IMEStatus(), 0);
        ime->setEnabled(true);
        QCOMPARE(IME::IMEStatus(), 4);
        ime->setEnabled(true);   // already on: stays on
        QCOMPARE(IME::IMEStatus(), 4);
    }

    void romajiComposeAndConvert()
    {
        edit->clear();
        KeySender::send(QStringLiteral("nihongo"));
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("にほんご"));
        ime->KeyPress(IME::ConvertKey);
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("日本語"));
        KeySender::send(QStringLiteral("{ENTER}"));
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語"));
        QCOMPARE(ime->Read(), QStringLiteral("日本語\r\nにほんご"));
        // Full-width characters pass through the input method as they are.
        KeySender::send(QStringLiteral("ＡＢ"));
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語ＡＢ"));
    }

    void detachedWindowGetsKeysDirectly()
    {
        edit->clear();
        ime->Dissociate();
        KeySender::send(QStringLiteral("ni"));
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("ni"));
        ime->Associate();
        edit->clear();
        KeySender::send(QStringLiteral("ni{ENTER}"));
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("に"));
        ime->setEnabled(false);
        QCOMPARE(IME::IMEStatus(), 0);
    }
};

LANTERN_IBUS_TEST_MAIN(TestIBusBridge)
#include "test_ibusbridge.moc"
