#include "platform/Beeper.h"
#include "platform/MusicPlayer.h"
#include "support/PrivateSoundServer.h"

#include <QAudioDevice>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QSignalSpy>
#include <QtTest>

// What a listener would hear: music and the beep played into a sound server
// of the test's own. Skipped where PulseAudio cannot be started.
class TestMusicPlayback : public QObject
{
    Q_OBJECT

    PrivateSoundServer m_server;
    const QString m_tune = qEnvironmentVariable("LANTERN_PROGRAM_DIR", QStringLiteral(LANTERN_PROGRAM_DIR))
        + QStringLiteral("/SKIN/2.MIDI");

    bool sounding() const { return m_server.sinkState() == QLatin1String("RUNNING"); }

private slots:
    void initTestCase()
    {
        if (!m_server.start())
            QSKIP(qPrintable(m_server.problem()));
        QVERIFY(!QMediaDevices::defaultAudioOutput().isNull());
        QVERIFY(!sounding());
    }

    void musicPlaysUntilStopped()
    {
        MusicPlayer player;
        QSignalSpy started(&player, &MusicPlayer::started);
        QSignalSpy stopped(&player, &MusicPlayer::stopped);
        QSignalSpy failed(&player, &MusicPlayer::failed);
        player.play(m_tune);
        QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 60000);
        QVERIFY(player.isPlaying());
        QCOMPARE(player.source(), QUrl::fromLocalFile(MusicPlayer::cachedWavePath(m_tune)));
        QCOMPARE(player.loops(), int(QMediaPlayer::Infinite));
        QTRY_VERIFY_WITH_TIMEOUT(sounding(), 10000);
        QCOMPARE(m_server.streamCount(), 1);
        // Still going a moment later: the player did not stop after a buffer.
        QTest::qWait(1500);
        QVERIFY(sounding());
        // A panel shown again asks again; the tune goes on undisturbed.
        player.play(m_tune);
        QCOMPARE(started.count() + stopped.count() + failed.count(), 1);
        player.stop();
        QCOMPARE(stopped.count(), 1);
        QVERIFY(!player.isPlaying());
        QTRY_VERIFY_WITH_TIMEOUT(!sounding(), 10000);
    }

    // A chime, not a tone that goes on.
    void beepSoundsBriefly()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!sounding(), 10000);
        Beeper::beep();
        QTRY_VERIFY_WITH_TIMEOUT(sounding(), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!sounding(), 10000);
    }
};

QTEST_MAIN(TestMusicPlayback)
#include "test_music_playback.moc"
