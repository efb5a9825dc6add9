#include "platform/Beeper.h"
#include "platform/MusicPlayer.h"
#include "platform/touch/TouchPanel.h"
#include "support/FileBytes.h"
#include "support/WaveSamples.h"

#include <QAudioDevice>
#include <QMediaDevices>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int RenderTimeoutMs = 60 * 1000;

const QString skinTune = qEnvironmentVariable("LANTERN_PROGRAM_DIR", QStringLiteral(LANTERN_PROGRAM_DIR))
    + QStringLiteral("/SKIN/2.MIDI");

// Every rendered or half-rendered file in the cache.
QStringList cachedFiles()
{
    return QDir(MusicPlayer::cacheFolder()).entryList(QDir::Files);
}

} // namespace

// These cases run as on a machine without speakers, whatever this one has;
// playing for real is the playback suite's business.
class TestSounds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("PULSE_SERVER", QByteArrayLiteral("unix:/nonexistent/lantern-no-sound"));
        QVERIFY(QMediaDevices::defaultAudioOutput().isNull());
    }

    void init() { QDir(MusicPlayer::cacheFolder()).removeRecursively(); }

    // Rendered into the cache, and again when the tune changes; without an
    // audio output the music is reported missing, never faked.
    void rendersOnceUntilTheTuneChanges()
    {
        QTemporaryDir dir;
        const QString tune = dir.filePath(QStringLiteral("tune.mid"));
        QVERIFY2(QFile::copy(skinTune, tune), qPrintable(skinTune));
        MusicPlayer player;
        QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
        QSignalSpy renderFinished(&player, &MusicPlayer::renderFinished);
        QSignalSpy failed(&player, &MusicPlayer::failed);
        player.play(tune);
        QCOMPARE(renderStarted.count(), 1);
        QVERIFY(player.isRendering() && !player.isPlaying());
        QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 1, RenderTimeoutMs);
        const QString wavePath = renderFinished.first().first().toString();
        QCOMPARE(wavePath, MusicPlayer::cachedWavePath(tune));
        QVERIFY(wavePath.startsWith(qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/lantern/")));
        QCOMPARE(cachedFiles(), QStringList{QFileInfo(wavePath).fileName()});
        const WaveSamples wave = WaveSamples::fromFile(wavePath);
        QVERIFY2(wave.isValid(), qPrintable(wave.problem));
        QCOMPARE(wave.sampleRate, 44100);
        QCOMPARE(wave.channels, 2);
        // The waltz runs a little over a minute: a few seconds would mean a
        // truncated render, many minutes a runaway one.
        QVERIFY2(wave.seconds() > 30 && wave.seconds() < 180, qPrintable(QString::number(wave.seconds())));
        QVERIFY2(wave.rms() > 0.003 && wave.peak() < 0.99, qPrintable(QString::number(wave.rms())));
        QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, RenderTimeoutMs);
        QVERIFY2(failed.first().first().toString().startsWith(QLatin1String("no audio output")),
                 qPrintable(failed.first().first().toString()));
        QVERIFY(!player.isPlaying() && !player.isRendering() && player.midiFile().isEmpty());

        // A tune saved again under the same name is a new tune.
        QVERIFY(writeFileBytes(tune, QByteArray(16, '\0'), true));
        QVERIFY(MusicPlayer::cachedWavePath(tune) != wavePath);
        player.play(tune);
        QCOMPARE(renderStarted.count(), 2);
        QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 2, RenderTimeoutMs);
        QCOMPARE(renderFinished.last().first().toString(), MusicPlayer::cachedWavePath(tune));
    }

    void stopWhileRenderingCancelsTheStart()
    {
        MusicPlayer player;
        QSignalSpy renderFinished(&player, &MusicPlayer::renderFinished);
        QSignalSpy started(&player, &MusicPlayer::started);
        QSignalSpy stopped(&player, &MusicPlayer::stopped);
        QSignalSpy failed(&player, &MusicPlayer::failed);
        player.play(skinTune);
        QVERIFY(player.isRendering());
        player.stop();
        QVERIFY(!player.isRendering());
        // Give a render that was not really stopped time to finish and show itself.
        QTest::qWait(4000);
        QCOMPARE(renderFinished.count() + started.count() + stopped.count() + failed.count(), 0);
        QVERIFY(!player.isPlaying());
        QCOMPARE(cachedFiles(), QStringList());
    }

    void badTunesAndMissingToolsFailQuietly_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: no file at all
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("soundFont");
        QTest::addColumn<QString>("reason");
        const QString synth = QStringLiteral("fluidsynth");
        const QString font = MusicPlayer().soundFont();
        static const char damaged[] = "MThd\0\0\0\6\0\1\0\1\1\xe0MTrk\xff\xff\xff\xff garbage";
        QTest::newRow("missing file") << QByteArray() << synth << font << "no music file";
        QTest::newRow("text file") << QByteArray("Not a tune at all\n") << synth << font << "is not a MIDI file";
        QTest::newRow("damaged MIDI") << QByteArray(damaged, sizeof damaged - 1) << synth << font << "could not render";
        QTest::newRow("no synthesizer") << QByteArray("MThd") << "/nonexistent/fluidsynth" << font << "is not installed";
        QTest::newRow("no soundfont") << QByteArray("MThd") << synth << "/nonexistent/GM.sf2"
                                      << "no soundfont";
    }

    void badTunesAndMissingToolsFailQuietly()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, program);
        QFETCH(QString, soundFont);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        const QString tune = dir.filePath(QStringLiteral("tune.mid"));
        QVERIFY(content.isEmpty() || writeFileBytes(tune, content));
        MusicPlayer player;
        player.setSynthesizer(program, soundFont);
        QSignalSpy started(&player, &MusicPlayer::started);
        QSignalSpy failed(&player, &MusicPlayer::failed);
        player.play(tune);
        QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, RenderTimeoutMs);
        QVERIFY2(failed.first().first().toString().contains(reason), qPrintable(failed.first().first().toString()));
        QCOMPARE(started.count(), 0);
        QVERIFY(!player.isPlaying() && !player.isRendering());
        QCOMPARE(cachedFiles(), QStringList());
    }

    void followsThePanelThatAsksForMusic()
    {
        TouchPanel quiet, box;
        box.setMusicFile(skinTune);
        MusicPlayer player;
        player.follow(&quiet);
        player.follow(&box);
        QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
        quiet.show(); // a panel without a tune asks for nothing
        QCOMPARE(renderStarted.count(), 0);
        // A panel with a tune plays it while it is on screen.
        box.show();
        QVERIFY(box.isSoundPlaying());
        QCOMPARE(player.midiFile(), skinTune);
        QCOMPARE(renderStarted.count(), 1);
        box.hide();
        QVERIFY(!box.isSoundPlaying());
        QVERIFY(player.midiFile().isEmpty() && !player.isRendering() && !player.isPlaying());
        // A panel that already asks when it is followed is answered at once.
        box.play();
        MusicPlayer late;
        late.follow(&box);
        QCOMPARE(late.midiFile(), skinTune);
        late.stop();
    }

    // A short chime, audible yet nowhere near full scale, starting and ending
    // at rest so that it never clicks.
    void chimeIsShortAndSoft()
    {
        const WaveSamples wave = WaveSamples::fromBytes(Beeper::chimeWave());
        QVERIFY2(wave.isValid(), qPrintable(wave.problem));
        QCOMPARE(wave.channels, 1);
        QCOMPARE(wave.sampleRate, 44100);
        QCOMPARE(wave.samples.size(), 44100 * 150 / 1000);
        QVERIFY2(wave.rms() > 0.03 && wave.peak() < 0.5, qPrintable(QString::number(wave.rms())));
        QVERIFY(qAbs(wave.samples.first()) < 100 && qAbs(wave.samples.last()) < 100);
        // It fades: the last 40 ms are much quieter than the first.
        WaveSamples first = wave, last = wave;
        first.samples = wave.samples.first(1764);
        last.samples = wave.samples.last(1764);
        QVERIFY(last.rms() < first.rms() / 2);
    }

    // Without a device beeping returns at once, quietly, and may be repeated;
    // the chime is written to the cache once.
    void chimeFileIsWrittenOnce()
    {
        for (int i = 0; i < 3; ++i)
            Beeper::beep();
        const QString path = Beeper::chimePath();
        QCOMPARE(path, qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/lantern/beep.wav"));
        QCOMPARE(fileBytes(path), Beeper::chimeWave());
        const QDateTime written = QFileInfo(path).lastModified();
        QTest::qWait(20);
        QCOMPARE(Beeper::chimePath(), path);
        QCOMPARE(QFileInfo(path).lastModified(), written);
    }
};

QTEST_MAIN(TestSounds)
#include "test_sounds.moc"
