#include "platform/agent/SpeechText.h"
#include "platform/agent/Voice.h"
#include "platform/agent/WaveAudio.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace {

// A clip of `leadMs` silence, `toneMs` of a 440 Hz tone and `tailMs` silence.
WaveAudio toneClip(int rate, int leadMs, int toneMs, int tailMs)
{
    QList<qint16> tone;
    for (int i = 0; i < rate * toneMs / 1000; ++i)
        tone.append(qint16(8000 * std::sin(2 * M_PI * 440 * i / rate)));
    WaveAudio clip(rate, 1);
    clip.appendSilence(leadMs);
    clip.append(WaveAudio(rate, 1, tone));
    clip.appendSilence(tailMs);
    return clip;
}

} // namespace

class TestSpeechAudio : public QObject
{
    Q_OBJECT

private slots:
    void clipsSaveLoadAndJoin()
    {
        QTemporaryDir dir;
        WaveAudio joined(48000, 1);
        joined.append(toneClip(48000, 100, 200, 0));
        joined.appendSilence(1000);
        joined.append(toneClip(48000, 0, 300, 100));
        QCOMPARE(joined.durationMs(), 1700);
        QVERIFY(!joined.append(toneClip(22050, 0, 100, 0))); // another rate cannot join
        QCOMPARE(joined.durationMs(), 1700);
        QVERIFY(joined.save(dir.filePath(QStringLiteral("clip.wav"))));
        WaveAudio read;
        QVERIFY(read.load(dir.filePath(QStringLiteral("clip.wav"))));
        QCOMPARE(std::pair(read.sampleRate(), read.channels()), std::pair(48000, 1));
        QCOMPARE(read.samples(), joined.samples());
        QVERIFY(read.peak() > 7900 && read.peak() <= 8000);
        // Foreign and missing files are refused.
        QFile file(dir.filePath(QStringLiteral("text.wav")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("RIFF\x10\x00\x00\x00WAVEnot really");
        file.close();
        QVERIFY(!read.load(file.fileName()));
        QVERIFY(!read.load(dir.filePath(QStringLiteral("missing.wav"))));
    }

    void trimmingCutsBothSilentEnds()
    {
        WaveAudio clip = toneClip(48000, 400, 500, 300);
        clip.trimSilence(320, 15);
        // The tone and a margin of 15 ms at each end, give or take the quiet start of the sine.
        QVERIFY2(clip.durationMs() >= 500 && clip.durationMs() <= 531, qPrintable(QString::number(clip.durationMs())));
        WaveAudio silent(48000, 1);
        silent.appendSilence(300);
        silent.trimSilence();
        QVERIFY(silent.isEmpty());
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

QTEST_APPLESS_MAIN(TestSpeechAudio)
#include "test_speech_audio.moc"
