#include "support/PadDriver.h"
#include "platform/ime/Fcitx5Framework.h"
#include "platform/ime/IBusFramework.h"
#include "platform/ime/InputMethodTool.h"
#include "tools/IME.h"

#include <QApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The bridge without a running input method (the real ones are driven in
// ime/inputmethod and ibusbridge): the keys it sends, the last result and its reading, detaching,
// and starting or raising programs.
class TestIME : public QObject
{
    Q_OBJECT

private:
    QWidget window;
    QTextEdit *edit = nullptr;

    // What a widget answers the input method.
    static QVariant asked(QWidget *widget, Qt::InputMethodQuery property)
    {
        QInputMethodQueryEvent query(property);
        QCoreApplication::sendEvent(widget, &query);
        return query.value(property);
    }
    static bool imEnabled(QWidget *widget) { return asked(widget, Qt::ImEnabled).toBool(); }

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
            QMetaObject::invokeMethod(
                this, [&ran] { ran = true; }, Qt::QueuedConnection);
            ime.KeyPress(code, false);
            QCOMPARE(std::pair(code, ran), std::pair(code, code == IME::ProcessEvents));
            QCOMPARE(std::pair(code, sent.take()), std::pair(code, KeyNotation::parse(keys.value(code))));
        }
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
        ime.Dissociate(); // no window yet: nothing to detach
        QVERIFY(imEnabled(edit));
        ime.setHandle(&window);
        ime.Dissociate();
        QVERIFY(!imEnabled(edit));
        QLineEdit elsewhere;
        QVERIFY(imEnabled(&elsewhere));
        ime.Associate();
        QVERIFY(imEnabled(edit));
        ime.Dissociate();
        delete new IME; // a second object has no say over the window
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

    // The Qt input module wins; without one Fcitx 5 goes before IBus (it
    // also owns IBus's portal name).
    void theFrameworkFollowsTheDesktop()
    {
        using F = InputMethodFramework;
        const std::tuple<const char *, bool, bool, F::Kind> cases[] = {
            // clang-format off
            {"ibus", true, false, F::IBus},      {"fcitx", false, true, F::Fcitx5},
            {"fcitx5", false, false, F::Fcitx5}, {" IBus ", false, false, F::IBus},
            {"", true, true, F::Fcitx5},         {"", false, true, F::IBus},
            {"xim", true, false, F::Fcitx5},     {"compose", false, false, F::NoFramework},
            {"", false, false, F::NoFramework},
        };
        // clang-format on
        for (const auto &[module, fcitx, ibus, chosen] : cases)
            QCOMPARE(std::tuple(module, fcitx, ibus, F::choose(QString::fromLatin1(module), fcitx, ibus)),
                     std::tuple(module, fcitx, ibus, chosen));
    }

    // Each mode as IBus's Mozc shows it, as Fcitx's item shows it, as status
    // and as conversion mode.
    void modesAreReadAlikeFromBothFrameworks()
    {
        using Mode = InputMethodFramework::InputMode;
        const std::tuple<const char *, const char *, Mode, int, IME::ConversionMode> cases[] = {
            {"あ", "fcitx_mozc_hiragana", Mode::Hiragana, 4, IME::Native | IME::FullShape | IME::Roman},
            {"ア", "fcitx_mozc_katakana_full", Mode::FullKatakana, 5,
             IME::Native | IME::Katakana | IME::FullShape | IME::Roman},
            {"_ｱ", "fcitx_mozc_katakana_half", Mode::HalfKatakana, 6, IME::Native | IME::Katakana | IME::Roman},
            {"Ａ", "fcitx_mozc_alpha_full", Mode::FullAlphabet, 7, IME::FullShape | IME::Roman},
            {"_A", "fcitx_mozc_alpha_half", Mode::HalfAlphabet, 8, IME::Roman},
            {"A", "input-keyboard-symbolic", Mode::Off, 0, IME::Alphanumeric},
            {"", "fcitx_mozc_direct", Mode::Off, 0, IME::Alphanumeric},
            {"ｱ", "fcitx_mozc", Mode::Off, 0, IME::Alphanumeric},
        };
        for (const auto &[utf8, icon, mode, status, conversion] : cases) {
            const QString symbol = QString::fromUtf8(utf8);
            QCOMPARE(std::pair(symbol, int(IBusFramework::modeForSymbol(symbol))), std::pair(symbol, status));
            QCOMPARE(std::pair(symbol, IME::conversionModeFor(status)), std::pair(symbol, conversion));
            if (mode != Mode::Off || symbol == QStringLiteral("A"))
                QCOMPARE(InputMethodFramework::symbolFor(mode), symbol);
            // Fcitx's item: its names without the theme's prefix, and with it.
            QCOMPARE(std::pair(icon, Fcitx5Framework::modeForIcon(QString::fromLatin1(icon))), std::pair(icon, mode));
        }
        QCOMPARE(Fcitx5Framework::modeForIcon(QStringLiteral("org.fcitx.Fcitx5.fcitx_mozc_hiragana")), Mode::Hiragana);
    }

    // Convert writes the sentence mode (never the conversion mode) and returns
    // the old one; -1 only reads. Only a sentence mode with phrase prediction
    // lets the input method predict.
    void theSentenceModeBecomesContentHints()
    {
        for (const auto &[mode, hints] : {std::pair{0, Qt::ImhNoPredictiveText}, {1, Qt::ImhNoPredictiveText}, {8, Qt::ImhNone}, {9, Qt::ImhNone}, {16, Qt::ImhNoPredictiveText}, {24, Qt::ImhNone}})
            QCOMPARE(std::pair(mode, IME::hintsFor(mode)), std::pair(mode, Qt::InputMethodHints(hints)));
        IME ime;
        ime.setHandle(&window);
        for (const auto &[mode, before] : {std::pair{-1, 8}, {-1, 8}, {1, 8}, {-1, 1}, {0, 1}, {-1, 0}})
            QCOMPARE(ime.Convert(mode), before);
        // The window's widgets answer with the hints, on top of their own.
        edit->setInputMethodHints(Qt::ImhPreferLatin);
        const std::pair<qint32, Qt::InputMethodHints> widgetHints[] = {
            {IME::Automatic, Qt::ImhPreferLatin | Qt::ImhNoPredictiveText}, {IME::PhrasePredict | IME::Conversation, Qt::ImhPreferLatin}};
        for (const auto &[mode, hints] : widgetHints) {
            ime.Convert(mode);
            QCOMPARE(Qt::InputMethodHints(asked(edit, Qt::ImHints).toInt()), hints);
        }
        edit->setInputMethodHints(Qt::ImhNone);
    }

    // Mozc's tool opens each dialog; word registration takes the word and its
    // reading from its environment, never from the clipboard.
    void theInputMethodsToolsAreMozcs()
    {
        if (InputMethodTool::mozcTool().isEmpty())
            QSKIP("Mozc's tool (mozc-utils-gui) is not installed");
        using T = InputMethodTool;
        const QString word = QStringLiteral("日本語"), reading = QStringLiteral("にほんご");
        const QString entry = QStringLiteral("default_entry_of_word_register=日本語");
        const std::tuple<T::Tool, QString, QString, const char *, QStringList> cases[] = {
            {T::Settings, word, reading, "--mode=config_dialog", {}},
            {T::WordRegistration, word, reading, "--mode=word_register_dialog",
             {entry, QStringLiteral("default_reading_entry_of_word_register=にほんご")}},
            {T::WordRegistration, word, {}, "--mode=word_register_dialog", {entry}},
            {T::WordRegistration, {}, {}, "--mode=word_register_dialog", {}},
            {T::Dictionary, word, reading, "--mode=dictionary_tool", {}},
        };
        for (const auto &[tool, toolWord, toolReading, argument, environment] : cases) {
            for (const auto framework : {InputMethodFramework::IBus, InputMethodFramework::Fcitx5}) {
                const T::Command command = T::command(tool, framework, toolWord, toolReading);
                QCOMPARE(std::tuple(int(tool), command.program, command.arguments, command.environment),
                         std::tuple(int(tool), T::mozcTool(), QStringList{QString::fromLatin1(argument)}, environment));
            }
        }
    }
};

QTEST_MAIN(TestIME)
#include "test_ime.moc"
