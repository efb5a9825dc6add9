#include "platform/Beeper.h"
#include "platform/MusicPlayer.h"
#include "support/PrivateSoundServer.h"

#include <QAudioDevice>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString skinTune()
{
    return qEnvironmentVariable("LANTERN_PROGRAM_DIR", QStringLiteral(LANTERN_PROGRAM_DIR))
           + QStringLiteral("/SKIN/2.MIDI");
}

} // namespace

// What a listener would hear: music and the beep played into a sound server
// of the test's own. Skipped where PulseAudio cannot be started.
class TestMusicPlayback : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void musicPlaysUntilStopped();
    void beepSoundsBriefly();
    void damagedCachedTuneIsRenderedAgain();

private:
    PrivateSoundServer m_server;
};

void TestMusicPlayback::initTestCase()
{
    if (!m_server.start())
        QSKIP(qPrintable(m_server.problem()));
    QVERIFY(!QMediaDevices::defaultAudioOutput().isNull());
    QCOMPARE(m_server.sinkState() == QLatin1String("RUNNING"), false);
}

void TestMusicPlayback::musicPlaysUntilStopped()
{
    const QString tune = skinTune();
    MusicPlayer player;
    QSignalSpy started(&player, &MusicPlayer::started);
    QSignalSpy failed(&player, &MusicPlayer::failed);
    player.play(tune);
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 60000);
    QCOMPARE(failed.count(), 0);
    QVERIFY(player.isPlaying());
    QCOMPARE(player.source(), QUrl::fromLocalFile(MusicPlayer::cachedWavePath(tune)));
    QCOMPARE(player.loops(), int(QMediaPlayer::Infinite));

    QTRY_COMPARE_WITH_TIMEOUT(m_server.sinkState(), QStringLiteral("RUNNING"), 10000);
    QCOMPARE(m_server.streamCount(), 1);
    // Still going a moment later: the player did not stop after a buffer.
    QTest::qWait(1500);
    QCOMPARE(m_server.sinkState(), QStringLiteral("RUNNING"));
    QCOMPARE(failed.count(), 0);

    // A panel shown again asks again; the tune goes on undisturbed.
    QSignalSpy stopped(&player, &MusicPlayer::stopped);
    player.play(tune);
    QCOMPARE(started.count(), 1);
    QCOMPARE(stopped.count(), 0);

    player.stop();
    QCOMPARE(stopped.count(), 1);
    QVERIFY(!player.isPlaying());
    QTRY_VERIFY_WITH_TIMEOUT(m_server.sinkState() != QLatin1String("RUNNING"), 10000);
}

void TestMusicPlayback::beepSoundsBriefly()
{
    QTRY_VERIFY_WITH_TIMEOUT(m_server.sinkState() != QLatin1String("RUNNING"), 10000);
    Beeper::beep();
    QTRY_COMPARE_WITH_TIMEOUT(m_server.sinkState(), QStringLiteral("RUNNING"), 10000);
    // A chime, not a tone that goes on.
    QTRY_VERIFY_WITH_TIMEOUT(m_server.sinkState() != QLatin1String("RUNNING"), 10000);
}

void TestMusicPlayback::damagedCachedTuneIsRenderedAgain()
{
    QTemporaryDir dir;
    const QString tune = dir.filePath(QStringLiteral("tune.mid"));
    QVERIFY(QFile::copy(skinTune(), tune));
    const QString cached = MusicPlayer::cachedWavePath(tune);
    QVERIFY(QDir().mkpath(MusicPlayer::cacheFolder()));
    QFile file(cached);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(64 * 1024, 'x'));
    file.close();

    MusicPlayer player;
    QSignalSpy failed(&player, &MusicPlayer::failed);
    QSignalSpy renderStarted(&player, &MusicPlayer::renderStarted);
    player.play(tune);
    QCOMPARE(renderStarted.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 10000);
    QVERIFY(!player.isPlaying());
    QVERIFY(!QFileInfo::exists(cached));

    QSignalSpy started(&player, &MusicPlayer::started);
    player.play(tune);
    QCOMPARE(renderStarted.count(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(m_server.sinkState(), QStringLiteral("RUNNING"), 10000);
    player.stop();
}

QTEST_MAIN(TestMusicPlayback)
#include "test_music_playback.moc"
