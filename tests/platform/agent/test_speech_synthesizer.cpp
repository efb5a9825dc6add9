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
        QCOMPARE(audio.sampleRate(), 22050); // espeak-ng's own rate: this clip is not Open JTalk's
        QVERIFY(audio.durationMs() > 1500 && audio.rms() > 500);
    }
};

QTEST_MAIN(TestSpeechSynthesizer)
#include "test_speech_synthesizer.moc"
