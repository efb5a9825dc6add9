#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentControl.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/SpeechBalloon.h"
#include "platform/agent/Voice.h"
#include "platform/vb/VbError.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString LanternFile = QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/LANTERN.ACS");
const QString JapaneseVoice = QStringLiteral("{A778E060-A936-11D1-B17B-0020AFED142E}");

// Follows a character: every request that starts and ends, every animation.
struct Recorder
{
    explicit Recorder(AgentCharacter &character)
    {
        QObject::connect(&character, &AgentCharacter::requestStarted, [this](const QString &r) { events << "start " + r; });
        QObject::connect(&character, &AgentCharacter::requestCompleted, [this](const QString &r) { events << "done " + r; });
        QObject::connect(&character, &AgentCharacter::animationStarted, [this](const QString &a) { animations << a; });
    }
    QStringList events;
    QStringList animations;
};

void waitUntilIdle(AgentCharacter &character, int timeoutMs = 15000)
{
    QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), timeoutMs);
}

} // namespace

class TestAgentCharacter : public QObject
{
    Q_OBJECT

private slots:
    void requestsRunOneAfterAnother()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        character.Show();
        character.Play(QStringLiteral("Greet"));
        character.Speak(QStringLiteral("こんにちは"));
        QCOMPARE(character.pendingRequests(),
                 QStringList({"Show", "Play Greet", "Speak こんにちは"}));

        QTRY_VERIFY_WITH_TIMEOUT(recorder.events.contains("start Speak こんにちは"), 10000);
        // Without a voice the words still show in the balloon.
        QTRY_VERIFY(character.balloon()->isVisible());
        QCOMPARE(character.balloon()->text(), QStringLiteral("こんにちは"));
        waitUntilIdle(character);

        QCOMPARE(recorder.events, QStringList({"start Show", "done Show", "start Play Greet", "done Play Greet",
                                               "start Speak こんにちは", "done Speak こんにちは"}));
        QCOMPARE(recorder.animations.mid(0, 3), QStringList({"Show", "Greet", "Speak"}));
        QVERIFY(character.Visible());
        QTRY_VERIFY(!character.balloon()->isVisible());
    }

    void mouthRestsInThePauses()
    {
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        character.setTTSModeID(JapaneseVoice);
        character.Show();
        waitUntilIdle(character);
        QSignalSpy ready(&character, &AgentCharacter::speechAudioReady);
        character.Speak(QStringLiteral("\\Pau=1000\\はい"));
        QVERIFY(ready.wait(20000));
        // The clip opens with a second of silence: the balloon is up, the mouth still.
        QVERIFY(character.balloon()->isVisible());
        QTest::qWait(300);
        QVERIFY(!recorder.animations.contains(QStringLiteral("Speak")));
        QTRY_VERIFY_WITH_TIMEOUT(recorder.animations.contains(QStringLiteral("Speak")), 3000);
        waitUntilIdle(character);
    }

    void stopEmptiesTheQueue()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        character.Show();
        character.Play(QStringLiteral("Greet"));
        character.Play(QStringLiteral("Acknowledge"));
        character.Speak(QStringLiteral("まだ話しません"));
        QTRY_VERIFY(recorder.events.contains("start Play Greet"));

        character.Stop();
        QVERIFY(character.pendingRequests().isEmpty());
        QTest::qWait(400);
        QVERIFY(!recorder.events.contains("start Play Acknowledge"));
        QVERIFY(character.Visible());
        QVERIFY(!character.balloon()->isVisible());

        // The queue works again after a stop; StopAll stops the same way.
        character.Play(QStringLiteral("Blink"));
        character.Speak(QStringLiteral("これも"));
        character.StopAll();
        QVERIFY(character.pendingRequests().isEmpty());
        character.Play(QStringLiteral("Blink"));
        QTRY_VERIFY(recorder.events.contains("done Play Blink"));
    }

    void unknownNamesFailAtOnce()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        QVERIFY_THROWS_EXCEPTION(VbError, character.Play(QStringLiteral("Dance")));
        QVERIFY_THROWS_EXCEPTION(VbError, character.Get(QStringLiteral("Animation"), QStringLiteral("RestPose,Dance")));
        QVERIFY_THROWS_EXCEPTION(VbError, character.Get(QStringLiteral("State"), QStringLiteral("Sleeping")));
        character.Get(QStringLiteral("State"), QStringLiteral("Idling,Listening,Hearing"));
        character.Get(QStringLiteral("animation"), QStringLiteral("restpose, blink"));
        QVERIFY(character.pendingRequests().isEmpty());
        QCOMPARE(character.requestLog(),
                 QStringList({"Play Dance", "Get Animation RestPose,Dance", "Get State Sleeping",
                              "Get State Idling,Listening,Hearing", "Get animation restpose, blink"}));
    }

    void moveToWalksThereWhileVisible()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        // Hidden, the character is simply put there.
        character.MoveTo(300, 200);
        waitUntilIdle(character);
        QCOMPARE(QPoint(character.Left(), character.Top()), QPoint(300, 200));
        QVERIFY(recorder.animations.isEmpty());

        character.Show();
        waitUntilIdle(character);
        QSignalSpy moved(character.window(), &CharacterWindow::moved);
        character.MoveTo(20, 210, 500);
        QTRY_VERIFY(recorder.events.contains("start MoveTo 20,210"));
        QVERIFY(character.isBusy());
        waitUntilIdle(character);
        QCOMPARE(character.window()->pos(), QPoint(20, 210));
        QCOMPARE(QPoint(character.Left(), character.Top()), QPoint(20, 210));
        QVERIFY2(moved.count() > 3, "the character walked in steps");
        QCOMPARE(recorder.animations.last(), QStringLiteral("MoveLeft"));

        character.MoveTo(20, 700, 300);
        waitUntilIdle(character);
        QCOMPARE(recorder.animations.last(), QStringLiteral("MoveDown"));
    }

    void gestureAtPointsTowardsThePoint()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        character.MoveTo(400, 400, 0);
        character.Show();
        character.GestureAt(0, 450);
        character.GestureAt(1500, 500);
        character.GestureAt(500, 0);
        character.GestureAt(520, 1000);
        waitUntilIdle(character);
        QCOMPARE(recorder.animations,
                 QStringList({"Show", "GestureLeft", "GestureRight", "GestureUp", "GestureDown"}));
    }

    void hideTakesTheCharacterAway()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        Recorder recorder(character);
        character.Show();
        character.Speak(QStringLiteral("さようなら"));
        character.Hide();
        waitUntilIdle(character);
        QVERIFY(!character.Visible());
        QVERIFY(!character.balloon()->isVisible());
        QCOMPARE(recorder.animations.last(), QStringLiteral("Hide"));
        // Playing while hidden shows nothing and finishes at once.
        recorder.animations.clear();
        character.Play(QStringLiteral("Greet"));
        waitUntilIdle(character, 200);
        QVERIFY(recorder.animations.isEmpty());
    }

    void windowsFloatWithoutTakingTheFocus()
    {
        // What keeps the document's focus is the window system honouring these;
        // without a window manager under test there is nothing more to watch.
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        for (QWidget *window : {static_cast<QWidget *>(character.window()), static_cast<QWidget *>(character.balloon())}) {
            const Qt::WindowFlags flags = window->windowFlags();
            QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
            QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
            QVERIFY(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
            QCOMPARE(window->windowType(), Qt::Tool);
            QVERIFY(window->testAttribute(Qt::WA_TranslucentBackground));
            QVERIFY(window->testAttribute(Qt::WA_ShowWithoutActivating));
            QCOMPARE(window->focusPolicy(), Qt::NoFocus);
        }
        QVERIFY(character.balloon()->windowFlags().testFlag(Qt::WindowTransparentForInput));
    }

    void voiceMustBeInstalled()
    {
        AgentCharacter character(QStringLiteral("Lantern"), CharacterFile::read(LanternFile));
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir empty;
        qputenv("PATH", empty.path().toUtf8());
        QVERIFY_THROWS_EXCEPTION(VbError, character.setTTSModeID(JapaneseVoice));
        QCOMPARE(character.TTSModeID(), QString());
        qputenv("PATH", path);

        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        character.setTTSModeID(JapaneseVoice);
        QVERIFY_THROWS_EXCEPTION(VbError, character.setTTSModeID(QStringLiteral("{CA141FD0-AC7F-11D1-97A3-006008273000}")));
        QCOMPARE(character.TTSModeID(), JapaneseVoice);
    }

    void controlLoadsCharactersByIdentifier()
    {
        AgentControl control;
        QVERIFY_THROWS_EXCEPTION(VbError, control.Characters().Load(QStringLiteral("LANTERN"), LanternFile));
        control.setConnected(true);
        control.Characters().Load(QStringLiteral("LANTERN"), LanternFile);
        QCOMPARE(control.Characters().Item(QStringLiteral("lantern")).id(), QStringLiteral("LANTERN"));
        QVERIFY_THROWS_EXCEPTION(VbError, control.Characters().Load(QStringLiteral("Lantern"), LanternFile));
        QVERIFY_THROWS_EXCEPTION(VbError, control.Characters().Load(QStringLiteral("OTHER"), QStringLiteral("/nonexistent.ACS")));
        QCOMPARE(control.Characters().Count(), 1);

        control.Characters().Unload(QStringLiteral("LANTERN"));
        QVERIFY_THROWS_EXCEPTION(VbError, control.Characters().Item(QStringLiteral("LANTERN")));
        control.Characters().Load(QStringLiteral("LANTERN"), LanternFile);
        control.setConnected(false);
        QCOMPARE(control.Characters().Count(), 0);
    }
};

QTEST_MAIN(TestAgentCharacter)
#include "test_agent_character.moc"
