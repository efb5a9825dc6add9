#include "tools/IME.h"

#include <QApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The bridge without a running input method (the real one is exercised in
// ibusbridge): its key table, sentence mode, last result and reading,
// detaching, and starting or raising programs.
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

    static QString fakeProgram(const QString &name, const QString &marker)
    {
        const QString folder = qEnvironmentVariable("HOME") + QStringLiteral("/bin");
        QDir().mkpath(folder);
        const QString path = folder + u'/' + name;
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(QStringLiteral("#!/bin/sh\necho \"$@\" > '%1'\n").arg(marker).toUtf8());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

private slots:
    void initTestCase()
    {
        auto *layout = new QVBoxLayout(&window);
        edit = new QTextEdit;
        layout->addWidget(edit);
        window.setWindowTitle(QStringLiteral("書きもの"));
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        edit->setFocus();
    }

    void keyCodesAndTheirKeys()
    {
        QCOMPARE(IME::keysFor(0), QString());
        QCOMPARE(IME::keysFor(1), QStringLiteral("{KANA}"));
        QCOMPARE(IME::keysFor(2), QStringLiteral("{KANJI}"));
        QCOMPARE(IME::keysFor(3), QStringLiteral("{CONVERT}"));
        QCOMPARE(IME::keysFor(4), QStringLiteral("{NONCONVERT}"));
        QCOMPARE(IME::keysFor(5), QStringLiteral("{ESCAPE}"));
        QCOMPARE(IME::keysFor(6), QStringLiteral("{PRTSC}"));
        QCOMPARE(IME::keysFor(-1), QString());
        QCOMPARE(IME::keysFor(7), QString());
    }

    void noKeyAndProcessEventsSendNothing()
    {
        IME ime;
        ime.setHandle(&window);
        edit->setPlainText(QStringLiteral("abc"));
        bool ran = false;
        QMetaObject::invokeMethod(this, [&ran] { ran = true; }, Qt::QueuedConnection);
        ime.KeyPress(0, true);
        ime.KeyPress(-1, false);
        QVERIFY(ran);   // pending events were processed once
        QTest::qWait(20);
        QCOMPARE(edit->toPlainText(), QStringLiteral("abc"));
        // Escape reaches the focused control as a key.
        ime.KeyPress(IME::EscapeKey);
    }

    void withoutAnInputMethodNothingIsOpen()
    {
        IME ime;
        QCOMPARE(ime.Handle(), quintptr(0));
        QCOMPARE(ime.Description(), QString());
        QVERIFY(!ime.Enabled());
        QCOMPARE(IME::IMEStatus(), 0);
    }

    // The sentence mode is written, the conversion mode only read.
    void convertReplacesTheSentenceModeAndReturnsTheOldOne()
    {
        IME ime;
        ime.setHandle(&window);
        QCOMPARE(ime.Convert(-1), 8);
        QCOMPARE(ime.Convert(-1), 8);
        QCOMPARE(ime.Convert(1), 8);
        QCOMPARE(ime.Convert(-1), 1);
        QCOMPARE(ime.Convert(0), 1);
        QCOMPARE(ime.Convert(-1), 0);
    }

    void readGivesTheLastResultAndItsReading()
    {
        IME ime;
        ime.setHandle(&window);
        QCOMPARE(ime.Read(), QStringLiteral("\r\n"));
        auto send = [this](const QString &preedit, const QString &commit) {
            QInputMethodEvent event(preedit, {});
            event.setCommitString(commit);
            QCoreApplication::sendEvent(edit, &event);
        };
        send(QStringLiteral("に"), {});
        send(QStringLiteral("にほんg"), {});
        send(QStringLiteral("にほんご"), {});
        send(QStringLiteral("日本語"), {});
        send({}, QStringLiteral("日本語"));
        QCOMPARE(ime.Read(), QStringLiteral("日本語\r\nにほんご"));
        // Kana applied without conversion are their own reading.
        send(QStringLiteral("かな"), {});
        send({}, QStringLiteral("かな"));
        QCOMPARE(ime.Read(), QStringLiteral("かな\r\nかな"));
        // Another window's compositions are not ours.
        QLineEdit other;
        QInputMethodEvent event(QString(), {});
        event.setCommitString(QStringLiteral("他"));
        QCoreApplication::sendEvent(&other, &event);
        QCOMPARE(ime.Read(), QStringLiteral("かな\r\nかな"));
    }

    void dissociateDetachesTheWholeWindowUntilAssociate()
    {
        IME ime;
        QVERIFY(imEnabled(edit));
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
        {
            IME gone;   // a second object has no say over the window
            QVERIFY(!imEnabled(edit));
        }
        ime.Associate();
    }

    void activateStartsAProgramOrRaisesAWindow()
    {
        IME ime;
        const QString marker = qEnvironmentVariable("HOME") + QStringLiteral("/started");
        const QString program = fakeProgram(QStringLiteral("helper"), marker);
        ime.Activate(program + QStringLiteral(" /T"), QString(), false);
        QTRY_VERIFY(QFile::exists(marker));
        QFile file(marker);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll().trimmed(), QByteArray("/T"));

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
        const QString marker = qEnvironmentVariable("HOME") + QStringLiteral("/setup");
        const QString setup = fakeProgram(QStringLiteral("ibus-setup"), marker);
        qputenv("PATH", QFileInfo(setup).absolutePath().toLocal8Bit() + ':' + qgetenv("PATH"));
        QCOMPARE(IME::dialogCommand(1), QStringList{setup});
        QCOMPARE(IME::dialogCommand(2), QStringList());
        QCOMPARE(IME::dialogCommand(0), QStringList());
        IME ime;
        ime.Dialog(5);
        ime.Dialog(1);
        QTRY_VERIFY(QFile::exists(marker));
    }
};

QTEST_MAIN(TestIME)
#include "test_ime.moc"
