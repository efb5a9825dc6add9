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

// The lantern, followed: every request that starts and ends, every animation.
struct Lantern : AgentCharacter
{
    QStringList events, animations;

    Lantern() : AgentCharacter(QStringLiteral("Lantern"), CharacterFile::read(LanternFile))
    {
        connect(this, &AgentCharacter::requestStarted, [this](const QString &r) { events << "start " + r; });
        connect(this, &AgentCharacter::requestCompleted, [this](const QString &r) { events << "done " + r; });
        connect(this, &AgentCharacter::animationStarted, [this](const QString &a) { animations << a; });
    }
};

} // namespace

class TestAgentCharacter : public QObject
{
    Q_OBJECT

private slots:
    void requestsRunOneAfterAnother()
    {
        Lantern character;
        character.Show();
        character.Play(QStringLiteral("Greet"));
        character.Speak(QStringLiteral("こんにちは"));
        QCOMPARE(character.pendingRequests(), QStringList({"Show", "Play Greet", "Speak こんにちは"}));
        // Without a voice the words still show in the balloon.
        QTRY_VERIFY_WITH_TIMEOUT(character.balloon()->isVisible(), 10000);
        QCOMPARE(character.balloon()->text(), QStringLiteral("こんにちは"));
        // What shows on the screen is the character drawn, not an empty window.
        const QImage shown = character.window()->grab().toImage();
        QVERIFY(shown.pixelColor(shown.width() / 2, shown.height() / 2).alpha() == 255);
        QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), 15000);
        QCOMPARE(character.events, QStringList({"start Show", "done Show", "start Play Greet", "done Play Greet",
                                                "start Speak こんにちは", "done Speak こんにちは"}));
        QCOMPARE(character.animations.mid(0, 3), QStringList({"Show", "Greet", "Speak"}));
        QVERIFY(character.Visible());
        QTRY_VERIFY(!character.balloon()->isVisible());
    }

    void stopEmptiesTheQueue()
    {
        Lantern character;
        character.Show();
        character.Play(QStringLiteral("Greet"));
        character.Play(QStringLiteral("Acknowledge"));
        character.Speak(QStringLiteral("まだ話しません"));
        QTRY_VERIFY(character.events.contains("start Play Greet"));
        character.Stop();
        QVERIFY(character.pendingRequests().isEmpty());
        QTest::qWait(400);
        QVERIFY(!character.events.contains("start Play Acknowledge"));
        QVERIFY(character.Visible());
        QVERIFY(!character.balloon()->isVisible());
        // The queue works again after a stop; StopAll stops the same way.
        character.Speak(QStringLiteral("これも"));
        character.StopAll();
        QVERIFY(character.pendingRequests().isEmpty());
        character.Play(QStringLiteral("Blink"));
        QTRY_VERIFY(character.events.contains("done Play Blink"));
    }

    void unknownNamesFailAtOnce()
    {
        Lantern character;
        QVERIFY_THROWS_EXCEPTION(VbError, character.Play(QStringLiteral("Dance")));
        QVERIFY_THROWS_EXCEPTION(VbError, character.Get(QStringLiteral("Animation"), QStringLiteral("RestPose,Dance")));
        QVERIFY_THROWS_EXCEPTION(VbError, character.Get(QStringLiteral("State"), QStringLiteral("Sleeping")));
        character.Get(QStringLiteral("animation"), QStringLiteral("restpose, blink"));
        QVERIFY(character.pendingRequests().isEmpty());
        QCOMPARE(character.requestLog(), QStringList({"Play Dance", "Get Animation RestPose,Dance", "Get State Sleeping",
                                                      "Get animation restpose, blink"}));
    }

    void moveAndGestureAnimateTowardsThePoint()
    {
        Lantern character;
        // Hidden, the character is simply put there.
        character.MoveTo(400, 400);
        QTRY_VERIFY(!character.isBusy());
        QCOMPARE(QPoint(character.Left(), character.Top()), QPoint(400, 400));
        QVERIFY(character.animations.isEmpty());
        character.Show();
        character.GestureAt(0, 450);
        character.GestureAt(1500, 500);
        character.GestureAt(500, 0);
        character.GestureAt(520, 1000);
        QSignalSpy moved(character.window(), &CharacterWindow::moved);
        character.MoveTo(20, 410, 500);
        character.MoveTo(20, 700, 300);
        QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), 15000);
        QCOMPARE(character.animations, QStringList({"Show", "GestureLeft", "GestureRight", "GestureUp", "GestureDown",
                                                    "MoveLeft", "MoveDown"}));
        QCOMPARE(character.window()->pos(), QPoint(20, 700));
        QVERIFY2(moved.count() > 6, "the character walked in steps");
    }

    void hideTakesTheCharacterAway()
    {
        Lantern character;
        character.Show();
        character.Speak(QStringLiteral("さようなら"));
        character.Hide();
        QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), 15000);
        QVERIFY(!character.Visible());
        QVERIFY(!character.balloon()->isVisible());
        QCOMPARE(character.animations.last(), QStringLiteral("Hide"));
        // Playing while hidden shows nothing and finishes at once.
        character.animations.clear();
        character.Play(QStringLiteral("Greet"));
        QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), 200);
        QVERIFY(character.animations.isEmpty());
    }

    void voiceMustBeInstalled()
    {
        Lantern character;
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir empty;
        qputenv("PATH", empty.path().toUtf8());
        QVERIFY_THROWS_EXCEPTION(VbError, character.setTTSModeID(JapaneseVoice));
        qputenv("PATH", path);
        QCOMPARE(character.TTSModeID(), QString());
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
