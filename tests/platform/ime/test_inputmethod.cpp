#include "platform/ime/InputMethodStatus.h"
#include "platform/keys/KeySender.h"
#include "support/FileBytes.h"
#include "support/IBusSession.h"
#include "tools/IME.h"

#include <QApplication>
#include <QDir>
#include <QInputMethodQueryEvent>
#include <QRegularExpression>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

#include <csignal>

// The input-method bridge against the real framework with Mozc, run once
// under IBus and once under Fcitx 5: the framework found, on and off, the
// modes, the sentence mode, the last result, and Mozc's own tools.
class TestInputMethod : public QObject
{
    Q_OBJECT

private:
    QWidget window;
    QTextEdit *edit = nullptr;
    IME *ime = nullptr;

    static InputMethodStatus &status() { return InputMethodStatus::instance(); }

    // The processes of Mozc's tool that this session started: pid, arguments
    // and the entries of their environment that prefill a dialog.
    struct Tool
    {
        int pid = 0;
        QStringList arguments, environment;
    };
    static QList<Tool> runningTools()
    {
        QList<Tool> tools;
        for (const QString &pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
            const auto words = [&pid](const char *file) {
                const QByteArray bytes = fileBytes(QStringLiteral("/proc/%1/%2").arg(pid, QLatin1String(file)));
                return QString::fromUtf8(bytes).split(QChar(0), Qt::SkipEmptyParts);
            };
            const QStringList arguments = words("cmdline"), environment = words("environ");
            if (arguments.value(0).endsWith(QStringLiteral("mozc_tool"))
                && environment.contains(QStringLiteral("HOME=") + qEnvironmentVariable("HOME")))
                tools << Tool{pid.toInt(), arguments.mid(1), environment.filter(QRegularExpression(QStringLiteral("^default_")))};
        }
        return tools;
    }

private slots:
    void initTestCase()
    {
        if (!IBusSession::available())
            QSKIP("needs an input-method session with Mozc");
        (new QVBoxLayout(&window))->addWidget(edit = new QTextEdit);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        edit->setFocus();
        ime = new IME(this);
        ime->setHandle(&window);
        QVERIFY(ime->Handle() != 0);
    }

    // The framework of the session is the one found, and Mozc is off in a
    // new window.
    void theDesktopsFrameworkIsFound()
    {
        const bool fcitx = qEnvironmentVariable("LANTERN_IM_SESSION") == QStringLiteral("fcitx5");
        QCOMPARE(status().kind(), fcitx ? InputMethodFramework::Fcitx5 : InputMethodFramework::IBus);
        QCOMPARE(ime->Layout, fcitx ? QStringLiteral("fcitx5:mozc") : QStringLiteral("ibus:mozc-jp"));
        QCOMPARE(ime->Description(), QStringLiteral("Mozc"));
        QTRY_COMPARE_WITH_TIMEOUT(status().modeSymbol(), QStringLiteral("A"), 5000);
        QCOMPARE(IME::IMEStatus(), 0);
        QVERIFY(!ime->Enabled());
    }

    // On gives status 4 (hiragana), off 0, whether the program or the Kanji
    // key switches.
    void onAndOffFromTheProgramAndByTheKanjiKey()
    {
        for (const auto &[byKey, on] : {std::pair(false, true), {false, false}, {true, true}, {true, false}}) {
            if (byKey)
                ime->KeyPress(IME::KanjiKey, true);
            else
                ime->setEnabled(on);
            QCOMPARE(std::tuple(byKey, IME::IMEStatus(), ime->Enabled()), std::tuple(byKey, on ? 4 : 0, on));
            QCOMPARE(ime->conversionMode(), on ? IME::Native | IME::FullShape | IME::Roman : IME::ConversionMode(IME::Alphanumeric));
        }
    }

    void theLastResultAndItsReading()
    {
        ime->setEnabled(true);
        KeySender::send(QStringLiteral("nihongo"));
        ime->KeyPress(IME::ConvertKey);
        QTest::qWait(300);
        KeySender::send(QStringLiteral("{ENTER}"));
        QTRY_COMPARE(edit->toPlainText(), QStringLiteral("日本語"));
        QCOMPARE(ime->Read(), QStringLiteral("日本語\r\nにほんご"));
        ime->setEnabled(false);
    }

    void theSentenceModeReachesTheContext()
    {
        QCOMPARE(ime->Convert(IME::ReadOnly), qint32(IME::PhrasePredict));
        QCOMPARE(ime->Convert(IME::NoSentenceMode), qint32(IME::PhrasePredict));
        QInputMethodQueryEvent query(Qt::ImHints);
        QCoreApplication::sendEvent(edit, &query);
        QVERIFY(Qt::InputMethodHints(query.value(Qt::ImHints).toInt()).testFlag(Qt::ImhNoPredictiveText));
        QCOMPARE(ime->Convert(IME::PhrasePredict), qint32(IME::NoSentenceMode));
    }

    void wordRegistrationOpensPrefilled()
    {
        ime->Dialog(IME::WordRegistrationDialog, QStringLiteral("日本語"), QStringLiteral("にほんご"));
        QTRY_COMPARE(runningTools().size(), 1);
        const Tool tool = runningTools().first();
        ::kill(tool.pid, SIGTERM);
        QCOMPARE(tool.arguments, QStringList{QStringLiteral("--mode=word_register_dialog")});
        QCOMPARE(tool.environment, QStringList({QStringLiteral("default_entry_of_word_register=日本語"), QStringLiteral("default_reading_entry_of_word_register=にほんご")}));
        QTRY_COMPARE(runningTools().size(), 0);
    }
};

LANTERN_IBUS_TEST_MAIN(TestInputMethod)
#include "test_inputmethod.moc"
