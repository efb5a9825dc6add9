#include "platform/MusicPlayer.h"
#include "platform/touch/TouchPanel.h"
#include "support/WaveSamples.h"

#include <QAudioDevice>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int RenderTimeoutMs = 60 * 1000;

QString skinTune()
{
    return qEnvironmentVariable("LANTERN_PROGRAM_DIR", QStringLiteral(LANTERN_PROGRAM_DIR))
           + QStringLiteral("/SKIN/2.MIDI");
}

// Every rendered or half-rendered file in the cache.
QStringList cachedFiles()
{
    return QDir(MusicPlayer::cacheFolder()).entryList(QDir::Files);
}

bool copyTune(const QString &to)
{
    QFile::remove(to);
    return QFile::copy(skinTune(), to);
}

} // namespace

class TestMusicPlayer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void skinTuneRendersToAudibleMusic();
    void secondPlayComesFromTheCache();
    void changedTuneIsRenderedAgain();
    void stopWhileRenderingCancelsTheStart();
    void badTunesAndMissingToolsFailQuietly_data();
    void badTunesAndMissingToolsFailQuietly();
    void followsThePanelThatAsksForMusic();

private:
    // Waits until the rendered tune reaches the (missing) audio output.
    void expectNoOutput(MusicPlayer &player, QSignalSpy &started, QSignalSpy &failed);
};

void TestMusicPlayer::initTestCase()
{
    // These cases run as on a machine without speakers, whatever this one
    // has; playing for real is the playback suite's business.
    qputenv("PULSE_SERVER", QByteArrayLiteral("unix:/nonexistent/lantern-no-sound"));
    QVERIFY(QMediaDevices::defaultAudioOutput().isNull());
}

void TestMusicPlayer::init()
{
    QDir(MusicPlayer::cacheFolder()).removeRecursively();
}

void TestMusicPlayer::expectNoOutput(MusicPlayer &player, QSignalSpy &started, QSignalSpy &failed)
{
    // A machine without sound: the music is reported missing, never faked.
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, RenderTimeoutMs);
    QVERIFY2(failed.first().first().toString().startsWith(QLatin1String("no audio output")),
             qPrintable(failed.first().first().toString()));
    QCOMPARE(started.count(), 0);
    QVERIFY(!player.isPlaying());
    QVERIFY(!player.isRendering());
}

void TestMusicPlayer::skinTuneRendersToAudibleMusic()
{
    QVERIFY2(QFileInfo(skinTune()).isFile(), qPrintable(skinTune()));
    MusicPlayer player;
    QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
    QSignalSpy renderFinished(&player, &MusicPlayer::renderFinished);
    QSignalSpy started(&player, &MusicPlayer::started);
    QSignalSpy failed(&player, &MusicPlayer::failed);

    player.play(skinTune());
    QCOMPARE(renderStarted.count(), 1);
    QVERIFY(player.isRendering());
    QVERIFY(!player.isPlaying());
    QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 1, RenderTimeoutMs);

    const QString wavePath = renderFinished.first().first().toString();
    QCOMPARE(wavePath, MusicPlayer::cachedWavePath(skinTune()));
    QVERIFY(wavePath.startsWith(qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/lantern/")));
    QCOMPARE(cachedFiles(), QStringList{QFileInfo(wavePath).fileName()});

    const WaveSamples wave = WaveSamples::fromFile(wavePath);
    QVERIFY2(wave.isValid(), qPrintable(wave.problem));
    QCOMPARE(wave.sampleRate, 44100);
    QCOMPARE(wave.channels, 2);
    // The waltz runs a little over a minute; a few seconds would mean a
    // truncated render, many minutes a runaway one.
    QVERIFY2(wave.seconds() > 30 && wave.seconds() < 180, qPrintable(QString::number(wave.seconds())));
    QVERIFY2(wave.rms() > 0.003, qPrintable(QString::number(wave.rms())));
    QVERIFY2(wave.peak() < 0.99, "the tune clips");

    expectNoOutput(player, started, failed);
    QVERIFY(player.midiFile().isEmpty());
    // The rendered tune stays for the day a device turns up.
    QVERIFY(QFileInfo::exists(wavePath));
}

void TestMusicPlayer::secondPlayComesFromTheCache()
{
    {
        MusicPlayer first;
        QSignalSpy renderFinished(&first, &MusicPlayer::renderFinished);
        first.play(skinTune());
        QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 1, RenderTimeoutMs);
    }
    const QString wavePath = MusicPlayer::cachedWavePath(skinTune());
    const QDateTime renderedAt = QFileInfo(wavePath).lastModified();

    MusicPlayer player;
    QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
    QSignalSpy started(&player, &MusicPlayer::started);
    QSignalSpy failed(&player, &MusicPlayer::failed);
    player.play(skinTune());
    // Straight from the cache: no synthesizer, and the answer comes at once.
    QVERIFY(!player.isRendering());
    QCOMPARE(failed.count(), 1);
    expectNoOutput(player, started, failed);
    QCOMPARE(renderStarted.count(), 0);
    QCOMPARE(QFileInfo(wavePath).lastModified(), renderedAt);
}

void TestMusicPlayer::changedTuneIsRenderedAgain()
{
    QTemporaryDir dir;
    const QString tune = dir.filePath(QStringLiteral("tune.mid"));
    QVERIFY(copyTune(tune));
    const QString before = MusicPlayer::cachedWavePath(tune);

    MusicPlayer player;
    QSignalSpy renderFinished(&player, &MusicPlayer::renderFinished);
    player.play(tune);
    QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 1, RenderTimeoutMs);
    player.stop();

    // A tune saved again under the same name is a new tune.
    QFile file(tune);
    QVERIFY(file.open(QIODevice::Append));
    file.write(QByteArray(16, '\0'));
    file.close();
    const QString after = MusicPlayer::cachedWavePath(tune);
    QVERIFY(after != before);

    QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
    player.play(tune);
    QCOMPARE(renderStarted.count(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 2, RenderTimeoutMs);
    QCOMPARE(renderFinished.last().first().toString(), after);
    player.stop();
}

void TestMusicPlayer::stopWhileRenderingCancelsTheStart()
{
    MusicPlayer player;
    QSignalSpy renderFinished(&player, &MusicPlayer::renderFinished);
    QSignalSpy started(&player, &MusicPlayer::started);
    QSignalSpy stopped(&player, &MusicPlayer::stopped);
    QSignalSpy failed(&player, &MusicPlayer::failed);

    player.play(skinTune());
    QVERIFY(player.isRendering());
    player.stop();
    QVERIFY(!player.isRendering());

    // Give a render that was not really stopped time to finish and show itself.
    QTest::qWait(4000);
    QCOMPARE(renderFinished.count(), 0);
    QCOMPARE(started.count(), 0);
    QCOMPARE(stopped.count(), 0);
    QCOMPARE(failed.count(), 0);
    QVERIFY(!player.isPlaying());
    QCOMPARE(cachedFiles(), QStringList());

    // A cancelled start leaves nothing behind that would spoil the next one.
    player.play(skinTune());
    QTRY_COMPARE_WITH_TIMEOUT(renderFinished.count(), 1, RenderTimeoutMs);
    QVERIFY(WaveSamples::fromFile(renderFinished.first().first().toString()).rms() > 0.003);
    player.stop();
}

void TestMusicPlayer::badTunesAndMissingToolsFailQuietly_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: no file at all
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("soundFont");
    QTest::addColumn<QString>("reason");

    const QString synth = QStringLiteral("fluidsynth");
    const QString font = MusicPlayer().soundFont();
    QTest::newRow("missing file") << QByteArray() << synth << font << "no music file";
    QTest::newRow("text file") << QByteArray("Not a tune at all\n") << synth << font << "is not a MIDI file";
    static const char damaged[] = "MThd\0\0\0\6\0\1\0\1\1\xe0MTrk\xff\xff\xff\xff garbage";
    QTest::newRow("damaged MIDI") << QByteArray(damaged, sizeof damaged - 1)
                                  << synth << font << "could not render";
    QTest::newRow("no synthesizer") << QByteArray("MThd") << "/nonexistent/fluidsynth" << font
                                    << "is not installed";
    QTest::newRow("no soundfont") << QByteArray("MThd") << synth << "/nonexistent/GM.sf2" << "no soundfont";
}

void TestMusicPlayer::badTunesAndMissingToolsFailQuietly()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, program);
    QFETCH(QString, soundFont);
    QFETCH(QString, reason);

    QTemporaryDir dir;
    const QString tune = dir.filePath(QStringLiteral("tune.mid"));
    if (!content.isEmpty()) {
        QFile file(tune);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    MusicPlayer player;
    player.setSynthesizer(program, soundFont);
    QSignalSpy started(&player, &MusicPlayer::started);
    QSignalSpy failed(&player, &MusicPlayer::failed);
    player.play(tune);
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, RenderTimeoutMs);
    QVERIFY2(failed.first().first().toString().contains(reason), qPrintable(failed.first().first().toString()));
    QCOMPARE(started.count(), 0);
    QVERIFY(!player.isPlaying());
    QVERIFY(!player.isRendering());
    QCOMPARE(cachedFiles(), QStringList());
}

void TestMusicPlayer::followsThePanelThatAsksForMusic()
{
    TouchPanel quiet;
    TouchPanel box;
    box.setMusicFile(skinTune());

    MusicPlayer player;
    player.follow(&quiet);
    player.follow(&box);
    QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);

    quiet.play(); // a panel without a tune asks for nothing
    QCOMPARE(renderStarted.count(), 0);
    QVERIFY(player.midiFile().isEmpty());

    box.play();
    QCOMPARE(player.midiFile(), skinTune());
    QCOMPARE(renderStarted.count(), 1);
    box.stop();
    QVERIFY(player.midiFile().isEmpty());
    QVERIFY(!player.isRendering());
    QVERIFY(!player.isPlaying());

    // A panel that already asks when it is followed is answered at once.
    box.play();
    MusicPlayer late;
    late.follow(&box);
    QCOMPARE(late.midiFile(), skinTune());
    late.stop();
}

QTEST_MAIN(TestMusicPlayer)
#include "test_music_player.moc"
