#include "platform/agent/SpeechSynthesizer.h"
#include "platform/agent/Voice.h"
#include "platform/agent/WaveAudio.h"

#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Reads a text with the installed voice and returns the joined clip.
WaveAudio synthesize(const QString &text)
{
    SpeechSynthesizer speech;
    QSignalSpy finished(&speech, &SpeechSynthesizer::finished);
    speech.start(text);
    if (!finished.wait(20000) || !speech.hasAudio())
        return WaveAudio();
    WaveAudio audio;
    audio.load(speech.audioPath());
    return audio;
}

} // namespace

class TestSpeechSynthesizer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (Voice::installedEngine() == Voice::Engine::None)
            QSKIP("no voice installed");
    }

    void shortSentenceIsReadAloud()
    {
        const WaveAudio audio = synthesize(QStringLiteral("こんにちは。"));
        QVERIFY(!audio.isEmpty());
        QVERIFY2(audio.durationMs() > 400 && audio.durationMs() < 2500, qPrintable(QString::number(audio.durationMs())));
        QVERIFY(audio.rms() > 1000);
        // The voice's own silence at both ends is cut away.
        const int edge = audio.sampleRate() / 20; // 50 ms
        const WaveAudio head(audio.sampleRate(), 1, audio.samples().mid(0, edge));
        QVERIFY(head.peak() > 320);
    }

    void pausesAddTheirSilence()
    {
        const WaveAudio plain = synthesize(QStringLiteral("今日は良い天気です"));
        const WaveAudio paused = synthesize(QStringLiteral("今日は\\Pau=1000\\良い\\Pau=1000\\天気です"));
        QVERIFY(!plain.isEmpty() && !paused.isEmpty());
        const qint64 longer = paused.durationMs() - plain.durationMs();
        QVERIFY2(longer >= 2000, qPrintable(QStringLiteral("%1 ms vs %2 ms").arg(paused.durationMs()).arg(plain.durationMs())));

        // The pause is true silence of the requested length somewhere in the clip.
        int longestQuiet = 0;
        int quiet = 0;
        for (const qint16 sample : paused.samples()) {
            quiet = std::abs(int(sample)) <= 320 ? quiet + 1 : 0;
            longestQuiet = std::max(longestQuiet, quiet);
        }
        QVERIFY(longestQuiet >= paused.sampleRate()); // at least one second
    }

    void voicedStretchesLieBetweenThePauses()
    {
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
        // "「" alone has nothing to pronounce: the clip starts with the pause.
        const WaveAudio audio = synthesize(QStringLiteral("「\\Pau=500\\はい"));
        QVERIFY(!audio.isEmpty());
        const int pause = audio.sampleRate() / 2;
        QCOMPARE(WaveAudio(audio.sampleRate(), 1, audio.samples().mid(0, pause)).peak(), 0);
        QVERIFY(WaveAudio(audio.sampleRate(), 1, audio.samples().mid(pause)).rms() > 1000);
        QVERIFY(synthesize(QStringLiteral("「」")).isEmpty());
    }

    void espeakStandsInForOpenJTalk()
    {
        const QString espeak = QStandardPaths::findExecutable(QStringLiteral("espeak-ng"));
        if (espeak.isEmpty())
            QSKIP("espeak-ng is not installed");
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir bin;
        QVERIFY(QFile::link(espeak, bin.filePath(QStringLiteral("espeak-ng"))));
        qputenv("PATH", bin.path().toUtf8());
        const Voice::Engine engine = Voice::installedEngine();
        const WaveAudio audio = synthesize(QStringLiteral("こんにちは\\Pau=1000\\さようなら"));
        qputenv("PATH", path);
        QCOMPARE(engine, Voice::Engine::EspeakNg);
        QVERIFY(!audio.isEmpty());
        QCOMPARE(audio.sampleRate(), 22050); // espeak-ng's own rate: this clip is not Open JTalk's
        QVERIFY(audio.durationMs() > 1500);
        QVERIFY(audio.rms() > 500);
    }

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
};

QTEST_MAIN(TestSpeechSynthesizer)
#include "test_speech_synthesizer.moc"
