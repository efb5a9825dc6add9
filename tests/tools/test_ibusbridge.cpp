#include "platform/ime/InputMethodStatus.h"
#include "tools/IME.h"
#include "support/IBusSession.h"
#include "support/PadDriver.h"
#include "support/PreeditWatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QWindow>

// The input-method bridge against the real IBus and Mozc: typing Japanese
// with the mouse alone, real clicks on the input pad while the host's text
// edit keeps the focus, and the last result read back with its reading.
class TestIBusBridge : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;
    IME *ime = nullptr;
    PreeditWatcher *preedit = nullptr;

    QString typed() const { return pad->edit->toPlainText(); }
    QString composing() const { return preedit->preedit(); }

    void verifyFocusStayed()
    {
        QCOMPARE(QApplication::focusWidget(), pad->edit);
        QCOMPARE(QGuiApplication::focusWindow(), pad->host->windowHandle());
    }

private slots:
    void initTestCase()
    {
        if (!IBusSession::available())
            QSKIP("needs the IBus session with Mozc");
        pad = std::make_unique<PadDriver>(QStringLiteral(LANTERN_PROGRAM_DIR), InfoDlg::CharacterMode, 1.5, true);
        preedit = new PreeditWatcher(pad->edit);
        QVERIFY(pad->show());
        ime = new IME(this);
        ime->setHandle(pad->host);
        QVERIFY(ime->Handle() != 0);
        QCOMPARE(ime->Description(), QStringLiteral("Mozc"));
        // Mozc starts in direct input and says so once it knows us.
        QTRY_COMPARE_WITH_TIMEOUT(InputMethodStatus::instance().modeSymbol(), QStringLiteral("A"), 5000);
        QCOMPARE(IME::IMEStatus(), 0);
        QVERIFY(!ime->Enabled());
    }

    void thePadTypesJapaneseThroughTheInputMethod()
    {
        pad->focus(pad->edit);
        pad->clickButton(16);
        QTRY_COMPARE(IME::IMEStatus(), 4);
        QTRY_VERIFY(pad->dialog->MiniChannels[16]->isChecked());
        QVERIFY(ime->Enabled());
        // Each key tells its host the input method's mode, which a title
        // field of the document follows.
        QList<qint32> statuses;
        auto watch = connect(pad->dialog, &InfoDlg::KeyCheck, this,
                             [&statuses](qint32 &status, qint32 &, QString &) { statuses.append(status); });
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}, {6, 5}, {10, 3}, {11, 5}}); // に ほ ん ご
        disconnect(watch);
        QCOMPARE(statuses, QList<qint32>({4, 4, 4, 4}));
        QTRY_COMPARE(composing(), QStringLiteral("にほんご"));
        QCOMPARE(typed(), QString());
        pad->clickButton(17); // convert
        QTRY_COMPARE(composing(), QStringLiteral("日本語"));
        pad->clickButton(19); // apply
        QTRY_COMPARE(ime->Read(), QStringLiteral("日本語\r\nにほんご"));
        verifyFocusStayed();
        // The alphabet types full width while the input method is on; a key
        // without romaji types its kana as they are, after what was composed.
        pad->clickKeys(KeyTable::Alpha, {{1, 1}, {13, 4}, {17, 1}});
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}});
        QTRY_COMPARE(composing(), QStringLiteral("に"));
        pad->clickKeys(KeyTable::Hiragana, {{20, 3}}); // 『
        QTRY_COMPARE(typed(), QStringLiteral("日本語Ａｚ７に『"));
        QCOMPARE(composing(), QString());
        verifyFocusStayed();

        // Switched off from the program, the pad's button follows.
        ime->setEnabled(false);
        QCOMPARE(IME::IMEStatus(), 0);
        QTRY_VERIFY(!pad->dialog->MiniChannels[16]->isChecked());
    }
};

LANTERN_IBUS_TEST_MAIN(TestIBusBridge)
#include "test_ibusbridge.moc"
