#include "app/Assistant.h"
#include "app/Globals.h"
#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentControl.h"
#include "platform/agent/Voice.h"
#include "platform/vb/VbRandom.h"
#include "support/CaseTable.h"
#include "support/FileBytes.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString P = QStringLiteral("\\Pau=1000\\");
const QString Greeting = QStringLiteral("こんにちは。今日もよろしくお願いします。");
const QString Farewell = QStringLiteral("さようなら。また会いましょう。");

QStringList restEnding(const QString &pose)
{
    return {"Activate", "Get Animation RestPose,Blink", "Play " + pose, "Get State Idling,Listening,Hearing"};
}

QString say(const QString &text)
{
    QString command = text;
    Assistant::Character(command);
    return command;
}

} // namespace

class TestAssistant : public QObject
{
    Q_OBJECT

    QTemporaryDir *m_windows = nullptr;

    // A Windows folder whose character folder holds the given characters.
    void install(const QStringList &files)
    {
        delete m_windows;
        m_windows = new QTemporaryDir;
        const QString chars = m_windows->filePath(QStringLiteral("MSAGENT/CHARS"));
        QDir().mkpath(chars);
        for (const QString &file : files)
            QVERIFY(QFile::copy(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/") + file, chars + u'/' + file));
        Globals::WinDir = m_windows->path();
    }

    // The lantern loaded, its log empty, and the random numbers of a fresh
    // run: 0.7055475 picks the second rest pose, the fourth (0.2895625) the first.
    AgentCharacter &loadLantern(int skipped = 0)
    {
        install({QStringLiteral("LANTERN.ACS")});
        say(QStringLiteral("On"));
        AgentCharacter *character = Assistant::character();
        if (!character)
            qFatal("the lantern did not load");
        character->clearRequestLog();
        VbRandom::restart();
        for (int i = 0; i < skipped; ++i)
            VbRandom::rnd();
        return *character;
    }

private slots:
    void cleanup()
    {
        Assistant::release();
        Globals::WinDir.clear();
        delete m_windows;
        m_windows = nullptr;
    }

    void onLoadsTheCharacterWithTheJapaneseVoice()
    {
        // Before "On" nothing was created and nothing happens.
        say(QStringLiteral("Hello!"));
        QVERIFY(!Assistant::control());
        install({QStringLiteral("LANTERN.ACS")});
        QCOMPARE(say(QStringLiteral("on")), QStringLiteral("On"));
        QCOMPARE(Assistant::characterId(), QStringLiteral("LANTERN"));
        QVERIFY(Assistant::control()->Connected());
        AgentCharacter *character = Assistant::character();
        QCOMPARE(character->LanguageID(), 1041);
        QCOMPARE(character->requestLog().first(), QStringLiteral("LanguageID 1041"));
        if (Voice::installedEngine() != Voice::Engine::None)
            QCOMPARE(character->TTSModeID(), QStringLiteral("{A778E060-A936-11D1-B17B-0020AFED142E}"));
        // Loading shows nothing yet: the greeting does.
        QVERIFY(!character->Visible());
        // Told "On" again (the main window reloading), the same character stays.
        say(QStringLiteral("On"));
        QCOMPARE(Assistant::character(), character);
        QCOMPARE(Assistant::control()->Characters().Count(), 1);
    }

    void greetingAndFarewell_data()
    {
        QTest::addColumn<int>("skipped");
        QTest::addColumn<QStringList>("commands");
        QTest::addColumn<QStringList>("requests");
        const QStringList hello{"StopAll", "Get State Showing", "Show", "Get Animation Greet", "Play Greet",
                                "Get State Speaking", "Speak " + Greeting};
        QTest::newRow("hello!") << 0 << QStringList{"hello!"} << hello + restEnding("Blink");
        QTest::newRow("first pose") << 3 << QStringList{"Hello!"} << hello + restEnding("RestPose");
        QTest::newRow("bye!") << 3 << QStringList{"Hello!", "bye!"}
                              << hello + restEnding("RestPose")
                + QStringList{"StopAll", "Get Animation Acknowledge", "Play Acknowledge",
                              "Get State Speaking", "Speak " + Farewell, "Get State Hiding", "Hide"}
                + restEnding("RestPose");
    }

    void greetingAndFarewell()
    {
        QFETCH(int, skipped);
        QFETCH(QStringList, commands);
        AgentCharacter &character = loadLantern(skipped);
        for (const QString &command : commands)
            say(command);
        QTEST(character.requestLog(), "requests");
    }

    void bothQuestionsSpeakTheDateAndTime()
    {
        AgentCharacter &character = loadLantern();
        for (const QString &question : {"What's the date today?", "What time is it now?"}) {
            character.clearRequestLog();
            say(question);
            const QStringList log = character.requestLog();
            QCOMPARE(log.value(0), QStringLiteral("Get State Speaking"));
            const QString spoken = log.value(1);
            // The present date in the long form and the time in the short one.
            const QString today = QDate::currentDate().toString(QStringLiteral("yyyy年M月d日"));
            QVERIFY2(QRegularExpression("^Speak " + today + " \\d\\d:\\d\\d$").match(spoken).hasMatch(), qPrintable(spoken));
            QCOMPARE(log.mid(2), restEnding(log.value(4).mid(5)));
        }
    }

    void movingCommandsMoveGestureAndGoHome()
    {
        AgentCharacter &character = loadLantern();
        QSet<QString> places;
        for (const QString &command : {"Thank you.", "Sorry.", "Let's go home, please."}) {
            character.clearRequestLog();
            say(command);
            const QStringList log = character.requestLog();
            QCOMPARE(log.size(), 7);
            QCOMPARE(log.mid(0, 2), QStringList({"Stop", "Get State Moving"}));
            QVERIFY(log.at(2).startsWith(QStringLiteral("MoveTo ")));
            QCOMPARE(log.at(3), QStringLiteral("Get State Gesturing"));
            QVERIFY(log.at(4).startsWith(QStringLiteral("GestureAt ")));
            QCOMPARE(log.mid(5), QStringList({"Activate", "MoveTo 0,0"}));
            places.insert(log.at(2));
        }
        QCOMPARE(places.size(), 3); // each command has a place of its own
    }

    // Every case in tests/data/assistant: the text the Japanese voice is
    // given for a text, and whether a voice is a Japanese one.
    void speechAndVoices_data() { addCaseRows(QStringLiteral("assistant"), 19); }

    void speechAndVoices()
    {
        QFETCH(QString, asked);
        const QString argument = asked.section(u'|', 1);
        if (asked.startsWith(u"speech|"))
            QTEST(Assistant::speechText(argument), "answer");
        else
            QTEST(QString::fromLatin1(Assistant::isJapaneseVoice(argument) ? "True" : "False"), "answer");
    }

    void otherTextIsRewrittenOnlyForTheJapaneseVoice_data()
    {
        QTest::addColumn<bool>("voice");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("spoken");
        QTest::newRow("no voice") << false << "あいう漢字\nです"
                                  << "あいう漢字\nです";
        QTest::newRow("Japanese voice") << true << "あいう漢字" << P + "あいう" + P + "漢字";
    }

    void otherTextIsRewrittenOnlyForTheJapaneseVoice()
    {
        QFETCH(bool, voice);
        QFETCH(QString, text);
        QFETCH(QString, spoken);
        if (voice && Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        // Without a voice on the path none is set.
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir empty;
        if (!voice)
            qputenv("PATH", empty.path().toUtf8());
        AgentCharacter &character = loadLantern();
        const QString said = say(text);
        qputenv("PATH", path);
        QCOMPARE(said, spoken);
        QCOMPARE(character.requestLog(), QStringList({"Get State Speaking", "Speak " + spoken}) + restEnding("Blink"));
    }

    void eachInstalledCharacterCanAppear()
    {
        install({QStringLiteral("LANTERN.ACS"), QStringLiteral("FUKURO.ACS")});
        QCOMPARE(Assistant::characterFiles().size(), 2);
        QSet<QString> seen;
        for (int start = 0; start < 80 && seen.size() < 2; ++start) {
            say(QStringLiteral("On"));
            seen.insert(Assistant::characterId());
            QVERIFY(Assistant::character());
            say(QStringLiteral("Off"));
            QTest::qWait(40); // the timer moves on between starts
        }
        QCOMPARE(seen, QSet<QString>({"LANTERN", "FUKURO"}));
    }

    void offUnloadsAndLaterCommandsDoNothing()
    {
        QPointer<AgentCharacter> watched(&loadLantern());
        say(QStringLiteral("Hello!"));
        QCOMPARE(say(QStringLiteral("off")), QStringLiteral("Off"));
        QVERIFY(!watched);
        QVERIFY(!Assistant::control()->Connected());
        QCOMPARE(Assistant::control()->Characters().Count(), 0);
        // Neither does anything happen with no character installed, or a damaged one.
        install({});
        for (const QString &command : {"Hello!", "Bye!", "Thank you.", "What time is it now?", "こんにちは", "On", "Hello!"})
            say(command);
        QVERIFY(!Assistant::character());
        QVERIFY(writeFileBytes(Globals::WinDir + QStringLiteral("/MSAGENT/CHARS/BROKEN.ACS"), "not a character"));
        say(QStringLiteral("On"));
        QCOMPARE(Assistant::characterId(), QStringLiteral("BROKEN"));
        QVERIFY(!Assistant::character());
        say(QStringLiteral("Hello!"));
    }
};

QTEST_MAIN(TestAssistant)
#include "test_assistant.moc"
