#include "support/FileBytes.h"
#include "support/PadDriver.h"
#include "tools/IME.h"

#include <QApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The bridge without a running input method (the real one is driven in
// ibusbridge): the keys it sends, the last result and its reading, detaching,
// and starting or raising programs.
class TestIME : public QObject
{
    Q_OBJECT

private:
    QWidget window;
    QTextEdit *edit = nullptr;

    static bool imEnabled(QWidget *widget)
    {
        QInputMethodQueryEvent query(Qt::ImEnabled);
        QCoreApplication::sendEvent(widget, &query);
        return query.value(Qt::ImEnabled).toBool();
    }

private slots:
    void initTestCase()
    {
        (new QVBoxLayout(&window))->addWidget(edit = new QTextEdit);
        window.setWindowTitle(QStringLiteral("書きもの"));
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        edit->setFocus();
    }

    // Codes 1 to 6 press the input method's keys; 0, 7 and -1 send nothing,
    // and -1 only lets pending events run.
    void keyPressSendsTheInputMethodsKeys()
    {
        const QStringList keys{"", "{KANA}", "{KANJI}", "{CONVERT}", "{NONCONVERT}", "{ESCAPE}", "{PRTSC}", ""};
        IME ime;
        ime.setHandle(&window);
        SentKeys sent;
        for (int code = -1; code <= 7; ++code) {
            bool ran = false;
            QMetaObject::invokeMethod(this, [&ran] { ran = true; }, Qt::QueuedConnection);
            ime.KeyPress(code, false);
            QCOMPARE(std::pair(code, ran), std::pair(code, code == IME::ProcessEvents));
            QCOMPARE(std::pair(code, sent.take()), std::pair(code, KeyNotation::parse(keys.value(code))));
        }
    }

    // The sentence mode is written, the conversion mode only read; -1 only reads.
    void convertReplacesTheSentenceModeAndReturnsTheOldOne()
    {
        IME ime;
        ime.setHandle(&window);
        for (const auto &[mode, before] : {std::pair{-1, 8}, {-1, 8}, {1, 8}, {-1, 1}, {0, 1}, {-1, 0}})
            QCOMPARE(ime.Convert(mode), before);
    }

    void readGivesTheLastResultAndItsReading()
    {
        IME ime;
        // Without an input method nothing is open.
        QCOMPARE(ime.Handle(), quintptr(0));
        QCOMPARE(ime.Description(), QString());
        QVERIFY(!ime.Enabled());
        QCOMPARE(IME::IMEStatus(), 0);
        ime.setHandle(&window);
        QCOMPARE(ime.Read(), QStringLiteral("\r\n"));
        const auto send = [](QWidget *to, const QString &preedit, const QString &commit) {
            QInputMethodEvent event(preedit, {});
            event.setCommitString(commit);
            QCoreApplication::sendEvent(to, &event);
        };
        for (const char *step : {"に", "にほんg", "にほんご", "日本語"})
            send(edit, QString::fromUtf8(step), {});
        send(edit, {}, QStringLiteral("日本語"));
        QCOMPARE(ime.Read(), QStringLiteral("日本語\r\nにほんご"));
        // Kana applied without conversion are their own reading.
        send(edit, QStringLiteral("かな"), {});
        send(edit, {}, QStringLiteral("かな"));
        QCOMPARE(ime.Read(), QStringLiteral("かな\r\nかな"));
        // Another window's compositions are not ours.
        QLineEdit other;
        send(&other, {}, QStringLiteral("他"));
        QCOMPARE(ime.Read(), QStringLiteral("かな\r\nかな"));
    }

    void dissociateDetachesTheWholeWindowUntilAssociate()
    {
        IME ime;
        ime.Dissociate();   // no window yet: nothing to detach
        QVERIFY(imEnabled(edit));
        ime.setHandle(&window);
        ime.Dissociate();
        QVERIFY(!imEnabled(edit));
        QLineEdit elsewhere;
        QVERIFY(imEnabled(&elsewhere));
        ime.Associate();
        QVERIFY(imEnabled(edit));
        ime.Dissociate();
        delete new IME;   // a second object has no say over the window
        QVERIFY(!imEnabled(edit));
        ime.Associate();
    }

    void activateStartsAProgramOrRaisesAWindow()
    {
        IME ime;
        const QString marker = qEnvironmentVariable("HOME") + QStringLiteral("/started");
        ime.Activate(QStringLiteral("touch ") + marker, QString(), false);
        QTRY_VERIFY(QFile::exists(marker));

        QWidget other;
        other.setWindowTitle(QStringLiteral("ほか"));
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        ime.Activate(QString(), QStringLiteral("書きもの"), true);
        QVERIFY(window.isActiveWindow());
        // Missing programs, unknown titles and empty arguments are ignored.
        ime.Activate(QStringLiteral("/no/such/program"), QString(), false);
        ime.Activate(QString(), QStringLiteral("no such window"), false);
        ime.Activate(QString(), QString(), true);
        QVERIFY(window.isActiveWindow());
        edit->setFocus();
    }

    void dialogOpensTheInputMethodsSettings()
    {
        if (QFileInfo(QStringLiteral("/usr/lib/mozc/mozc_tool")).isExecutable())
            QSKIP("Mozc's own tool is installed here: the fallback is not used");
        // A stand-in for the settings program that leaves a marker file.
        const QString folder = qEnvironmentVariable("HOME") + QStringLiteral("/bin");
        const QString marker = qEnvironmentVariable("HOME") + QStringLiteral("/setup");
        QDir().mkpath(folder);
        const QString setup = folder + QStringLiteral("/ibus-setup");
        QVERIFY(writeFileBytes(setup, QStringLiteral("#!/bin/sh\ntouch '%1'\n").arg(marker).toUtf8()));
        QFile::setPermissions(setup, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", folder.toLocal8Bit() + ':' + qgetenv("PATH"));
        IME ime;
        ime.Dialog(5);
        ime.Dialog(0);
        QTest::qWait(200);
        QVERIFY(!QFile::exists(marker));
        ime.Dialog(1);
        QTRY_VERIFY(QFile::exists(marker));
    }
};

QTEST_MAIN(TestIME)
#include "test_ime.moc"
