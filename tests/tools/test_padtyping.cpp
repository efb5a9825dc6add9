#include "tools/IME.h"
#include "support/IBusSession.h"
#include "support/PadDriver.h"
#include "support/PreeditWatcher.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QWindow>

// Typing Japanese with the mouse alone: real clicks on the input pad, the
// real IBus with Mozc composing and converting, and a text edit in another
// window that keeps the focus.
class TestPadTyping : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PadDriver> pad;
    PreeditWatcher *preedit = nullptr;

    QString typed() const { return pad->edit->toPlainText(); }

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
        QTRY_COMPARE_WITH_TIMEOUT(IME::IMEStatus(), 0, 5000);
        QTRY_VERIFY(!pad->dialog->MiniChannels[16]->isChecked());
    }

    void hiraganaKeysComposeAndConvertToKanji()
    {
        pad->clickButton(16);
        QTRY_COMPARE(IME::IMEStatus(), 4);
        QTRY_VERIFY(pad->dialog->MiniChannels[16]->isChecked());
        pad->clickButton(12);
        // Each key tells its host the input method's mode, which a title
        // field of the document follows.
        QList<qint32> statuses;
        auto watch = connect(pad->dialog, &InfoDlg::KeyCheck, this,
                             [&statuses](qint32 &status, qint32 &, QString &) { statuses.append(status); });
        pad->clickKeys(KeyTable::Hiragana, {{1, 1}});
        disconnect(watch);
        QCOMPARE(statuses, QList<qint32>{4});
        pad->clickButton(20);
        QTRY_COMPARE(preedit->preedit(), QString());
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}, {6, 5}, {10, 3}, {11, 5}});   // に ほ ん ご
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("にほんご"));
        QCOMPARE(typed(), QString());
        pad->clickButton(17);   // convert
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("日本語"));
        pad->clickButton(19);   // apply
        QTRY_COMPARE(typed(), QStringLiteral("日本語"));
        verifyFocusStayed();
        // The alphabet types full width while the input method is on.
        pad->clickKeys(KeyTable::Alpha, {{1, 1}, {13, 4}, {17, 1}});
        QTRY_COMPARE(typed(), QStringLiteral("日本語Ａｚ７"));
    }

    void spaceConvertsAndCancelGoesBack()
    {
        pad->clickKeys(KeyTable::Hiragana, {{2, 1}, {10, 3}, {12, 2}});   // か ん じ
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("かんじ"));
        pad->clickButton(1);    // space converts
        QTRY_VERIFY(preedit->preedit() != QStringLiteral("かんじ") && !preedit->preedit().isEmpty());
        const QString first = preedit->preedit();
        pad->clickButton(1);    // and gives the next candidate
        QTRY_VERIFY(preedit->preedit() != first && !preedit->preedit().isEmpty());
        pad->clickButton(20);   // cancel the conversion: the kana again
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("かんじ"));
        pad->clickButton(20);   // and the composition
        QTRY_COMPARE(preedit->preedit(), QString());
        QCOMPARE(typed(), QStringLiteral("日本語Ａｚ７"));
        // A key without romaji types its kana as they are, after what was composed.
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}});
        QTRY_COMPARE(preedit->preedit(), QStringLiteral("に"));
        pad->clickKeys(KeyTable::Hiragana, {{20, 3}});   // 『
        QTRY_COMPARE(typed(), QStringLiteral("日本語Ａｚ７に『"));
        QCOMPARE(preedit->preedit(), QString());
    }

    void offAgainTheKanaAreTypedDirectly()
    {
        pad->clickButton(16);
        QTRY_COMPARE(IME::IMEStatus(), 0);
        QTRY_VERIFY(!pad->dialog->MiniChannels[16]->isChecked());
        pad->clickKeys(KeyTable::Hiragana, {{5, 2}});
        pad->clickKeys(KeyTable::Alpha, {{1, 1}});
        QTRY_COMPARE(typed(), QStringLiteral("日本語Ａｚ７に『にA"));
        verifyFocusStayed();
    }
};

LANTERN_IBUS_TEST_MAIN(TestPadTyping)
#include "test_padtyping.moc"
