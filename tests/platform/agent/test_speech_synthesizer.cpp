#include "platform/agent/SpeechSynthesizer.h"
#include "platform/agent/SpeechText.h"
#include "platform/agent/Voice.h"
#include "platform/agent/WaveAudio.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

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

int longestQuietSamples(const WaveAudio &audio)
{
    int longest = 0, quiet = 0;
    for (const qint16 sample : audio.samples()) {
        quiet = std::abs(int(sample)) <= 320 ? quiet + 1 : 0;
        longest = std::max(longest, quiet);
    }
    return longest;
}

} // namespace

class TestSpeechSynthesizer : public QObject
{
    Q_OBJECT

private slots:
    void withoutAVoiceThereIsNoSound()
    {
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir empty;
        qputenv("PATH", empty.path().toUtf8());
        SpeechSynthesizer speech;
        QSignalSpy finished(&speech, &SpeechSynthesizer::finished);
        speech.start(QStringLiteral("こんにちは"));
        qputenv("PATH", path);
        QVERIFY(finished.wait(2000));
        QVERIFY(!speech.hasAudio());
    }

    void pausesAddTheirSilenceAndTheEndsAreCut()
    {
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        const WaveAudio plain = synthesize(QStringLiteral("今日は良い天気です"));
        const WaveAudio paused = synthesize(QStringLiteral("今日は\\Pau=1000\\良い\\Pau=1000\\天気です"));
        QVERIFY2(plain.durationMs() > 400 && plain.rms() > 1000, qPrintable(QString::number(plain.durationMs())));
        QVERIFY(paused.durationMs() - plain.durationMs() >= 2000);
        QVERIFY(longestQuietSamples(paused) >= paused.sampleRate()); // a second of true silence
        // The voice's own silence at the start is cut away.
        QVERIFY(WaveAudio(plain.sampleRate(), 1, plain.samples().mid(0, plain.sampleRate() / 20)).peak() > 320);
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

    void pauseTagsSplitTheText()
    {
        const QList<SpeechText::Piece> pieces = SpeechText::split(QStringLiteral("\\Pau=1000\\あいう\\Pau=1000\\漢字。\\pau=250\\ "));
        QCOMPARE(pieces.size(), 5);
        QCOMPARE(pieces.at(0).pauseMs, 1000);
        QCOMPARE(pieces.at(1).text, QStringLiteral("あいう"));
        QCOMPARE(pieces.at(2).pauseMs, 1000);
        QCOMPARE(pieces.at(3).text, QStringLiteral("漢字。"));
        QCOMPARE(pieces.at(4).pauseMs, 250);
        QCOMPARE(SpeechText::displayText(QStringLiteral("\\Pau=1000\\あいう\\Pau=1000\\漢字")), QStringLiteral("あいう漢字"));
        QCOMPARE(SpeechText::split(QStringLiteral("こんにちは")).size(), 1);
    }

    void clockTimesAreReadAsTimes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reading");
        QTest::newRow("long date and time") << "2026年11月23日 11:16" << "2026年11月23日 11時16分";
        QTest::newRow("leading zeros") << "09:05" << "9時5分";
        QTest::newRow("on the hour") << "12:00" << "12時";
        QTest::newRow("not times") << "比 3:2 と 123:45" << "比 3:2 と 123:45";
    }

    void clockTimesAreReadAsTimes()
    {
        QFETCH(QString, text);
        QTEST(Voice::reading(text), "reading");
    }

    void bothJapaneseModeIdsNameTheVoice()
    {
        QCOMPARE(Voice::japaneseModeIds().size(), 2);
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
        QVERIFY(Voice::isInstalled(QStringLiteral("{A778E061-A936-11D1-B17B-0020AFED142E}")));
        QVERIFY(Voice::isInstalled(QStringLiteral("{a778e060-a936-11d1-b17b-0020afed142e}")));
        QVERIFY(!Voice::isInstalled(QStringLiteral("{CA141FD0-AC7F-11D1-97A3-006008273000}")));
    }
};

QTEST_MAIN(TestSpeechSynthesizer)
#include "test_speech_synthesizer.moc"
