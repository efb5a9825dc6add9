#include "platform/agent/AgentCharacter.h"
#include "platform/agent/AgentControl.h"
#include "platform/agent/CharacterFile.h"
#include "platform/agent/CharacterStage.h"
#include "platform/agent/CharacterWindow.h"
#include "platform/agent/SpeechBalloon.h"
#include "platform/agent/SpeechSynthesizer.h"
#include "platform/agent/SpeechText.h"
#include "platform/agent/Voice.h"
#include "platform/agent/WaveAudio.h"
#include "platform/vb/VbError.h"
#include "support/CaseTable.h"
#include "support/FileBytes.h"

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

    Lantern()
        : AgentCharacter(QStringLiteral("Lantern"), CharacterFile::read(LanternFile))
    {
        connect(this, &AgentCharacter::requestStarted, [this](const QString &r) { events << "start " + r; });
        connect(this, &AgentCharacter::requestCompleted, [this](const QString &r) { events << "done " + r; });
        connect(this, &AgentCharacter::animationStarted, [this](const QString &a) { animations << a; });
    }
};

QByteArray bytesOf(const CharacterFile &character)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("C.ACS"));
    return character.write(path) ? fileBytes(path) : QByteArray();
}

// Reads a text with the installed voice and returns the joined clip.
WaveAudio synthesize(const QString &text)
{
    SpeechSynthesizer speech;
    QSignalSpy finished(&speech, &SpeechSynthesizer::finished);
    speech.start(text);
    WaveAudio audio;
    if (finished.wait(20000) && speech.hasAudio())
        audio.load(speech.audioPath());
    return audio;
}

} // namespace

class TestAgent : public QObject
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
        QCOMPARE(character.events, QStringList({"start Show", "done Show", "start Play Greet", "done Play Greet", "start Speak こんにちは", "done Speak こんにちは"}));
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
        QCOMPARE(character.requestLog(), QStringList({"Play Dance", "Get Animation RestPose,Dance", "Get State Sleeping", "Get animation restpose, blink"}));
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
        QCOMPARE(character.animations, QStringList({"Show", "GestureLeft", "GestureRight", "GestureUp", "GestureDown", "MoveLeft", "MoveDown"}));
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
        // Nor is there any sound without a voice.
        SpeechSynthesizer speech;
        QSignalSpy finished(&speech, &SpeechSynthesizer::finished);
        speech.start(QStringLiteral("こんにちは"));
        qputenv("PATH", path);
        QVERIFY(finished.wait(2000));
        QVERIFY(!speech.hasAudio());
        QCOMPARE(character.TTSModeID(), QString());
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        // Either Japanese voice, in any letter case, names the installed one.
        character.setTTSModeID(QStringLiteral("{A778E061-A936-11D1-B17B-0020AFED142E}"));
        character.setTTSModeID(QStringLiteral("{a778e060-a936-11d1-b17b-0020afed142e}"));
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

    void damagedFilesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = fileBytes(LanternFile);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("foreign") << QByteArray("ACSF\x01\x00\x00\x00 not ours");
        QTest::newRow("cut short") << good.left(good.size() / 2);
        QByteArray badVersion = good;
        badVersion[5] = 9;
        QTest::newRow("unknown version") << badVersion;
        QByteArray badPicture = good;
        badPicture[badPicture.size() - 30] = '\xFF';
        badPicture[badPicture.size() - 31] = '\x00';
        QTest::newRow("damaged picture") << badPicture;
        CharacterFile missingPicture;
        missingPicture.size = QSize(4, 4);
        missingPicture.images.append(QImage(missingPicture.size, QImage::Format_ARGB32_Premultiplied));
        missingPicture.images.first().fill(Qt::red);
        missingPicture.animations.insert(QStringLiteral("Broken"), {{1, 100}});
        QTest::newRow("animation of a missing picture") << bytesOf(missingPicture);
    }

    void damagedFilesAreRefused()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("C.ACS"));
        QVERIFY(writeFileBytes(path, bytes));
        QVERIFY_THROWS_EXCEPTION(VbError, CharacterFile::read(path));
    }

    // The shipped characters have every animation and state the assistant
    // routine and the engine ask for, and pictures of their size.
    void shippedCharacters_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("lantern") << QStringLiteral("LANTERN.ACS");
        QTest::newRow("owl") << QStringLiteral("FUKURO.ACS");
    }

    void shippedCharacters()
    {
        QFETCH(QString, file);
        const CharacterFile character = CharacterFile::read(QStringLiteral(LANTERN_PROGRAM_DIR "/CHARS/") + file);
        for (const char *name : {"RestPose", "Blink", "Greet", "Acknowledge", "Show", "Hide", "Speak", "MoveLeft",
                                 "MoveRight", "MoveUp", "MoveDown", "GestureLeft", "GestureRight", "GestureUp", "GestureDown"})
            QVERIFY2(character.hasAnimation(name), name);
        for (const char *name : {"Showing", "Hiding", "Speaking", "Moving", "Gesturing", "Idling", "Listening", "Hearing"})
            QVERIFY2(character.hasState(name), name);
        for (int i = 0; i < character.imageCount(); ++i)
            QCOMPARE(character.image(i).size(), character.size);
        const QImage rest = character.image(character.animation(QStringLiteral("RestPose")).first().image);
        QCOMPARE(rest.pixelColor(rest.width() / 2, rest.height() / 2).alpha(), 255);
        QCOMPARE(rest.pixelColor(0, 0).alpha(), 0);
    }

    void voicedStretchesLieBetweenThePauses()
    {
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        SpeechSynthesizer speech;
        QSignalSpy finished(&speech, &SpeechSynthesizer::finished);
        speech.start(QStringLiteral("\\Pau=1000\\はい\\Pau=500\\いいえ"));
        QVERIFY(finished.wait(20000));
        const QList<SpeechSynthesizer::Span> spans = speech.voicedSpans();
        QCOMPARE(spans.size(), 2);
        QCOMPARE(spans.at(0).startMs, 1000);
        QVERIFY(spans.at(0).endMs > 1100);
        QCOMPARE(spans.at(1).startMs, spans.at(0).endMs + 500);
        QCOMPARE(spans.at(1).endMs, speech.durationMs());
        // A pause is true silence, and the voice's own silence before a word is cut away.
        WaveAudio audio;
        QVERIFY(audio.load(speech.audioPath()));
        const int rate = audio.sampleRate();
        QVERIFY(WaveAudio(rate, 1, audio.samples().mid(rate, rate / 20)).peak() > 320);
        QCOMPARE(WaveAudio(rate, 1, audio.samples().mid(spans.at(0).endMs * rate / 1000 + rate / 100, rate / 2 - rate / 50)).peak(), 0);
    }

    void piecesWithNothingToSayAreSkipped()
    {
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        // "「" alone has nothing to pronounce: the clip starts with the pause.
        const WaveAudio audio = synthesize(QStringLiteral("「\\Pau=500\\はい"));
        const int pause = audio.sampleRate() / 2;
        QVERIFY(!audio.isEmpty());
        QCOMPARE(WaveAudio(audio.sampleRate(), 1, audio.samples().mid(0, pause)).peak(), 0);
        QVERIFY(WaveAudio(audio.sampleRate(), 1, audio.samples().mid(pause)).rms() > 1000);
        QVERIFY(synthesize(QStringLiteral("「」")).isEmpty());
    }

    // Every case in tests/data/agent: how the voice reads a text, the pieces
    // its pause tags split it into, and what the balloon shows of it.
    void speechText_data() { addCaseRows(QStringLiteral("agent"), 7); }

    void speechText()
    {
        QFETCH(QString, asked);
        const QString kind = asked.section(u'|', 0, 0), text = asked.section(u'|', 1);
        QStringList pieces;
        for (const SpeechText::Piece &piece : SpeechText::split(text))
            pieces << piece.text + u'/' + QString::number(piece.pauseMs);
        QTEST(kind == u"reading"     ? Voice::reading(text)
                  : kind == u"split" ? pieces.join(u", ")
                                     : SpeechText::displayText(text),
              "answer");
    }

    // Last: once a host gives a stage, it stays for the rest of the run.
    void onAHostsStageTheCharacterKeepsToItsPerch()
    {
        CharacterStage *stage = CharacterStage::instance();
        QSignalSpy words(stage, &CharacterStage::wordsShown);
        stage->setPerch(QRect(600, 400, 140, 140));
        Lantern character;
        character.Show();
        character.MoveTo(0, 0);
        character.Speak(QStringLiteral("こんにちは"));
        QTRY_VERIFY_WITH_TIMEOUT(!character.isBusy(), 15000);
        // At the perch's bottom right, as tall as the perch, letting clicks through.
        QCOMPARE(character.window()->geometry(), QRect(604, 400, 136, 140));
        QVERIFY(character.window()->isVisible());
        QVERIFY(character.window()->testAttribute(Qt::WA_TransparentForMouseEvents));
        // The words go to the host instead of a balloon.
        QCOMPARE(words.size(), 1);
        QCOMPARE(words.first().at(1).toString(), QStringLiteral("こんにちは"));
        QVERIFY(!character.balloon()->isVisible());
        // With no room it steps aside, and comes back when there is.
        stage->setPerch(QRect());
        QVERIFY(!character.window()->isVisible());
        stage->setPerch(QRect(10, 20, 100, 100));
        QCOMPARE(character.window()->geometry(), QRect(13, 20, 97, 100));
        QVERIFY(character.window()->isVisible());
    }
};

QTEST_MAIN(TestAgent)
#include "test_agent.moc"
