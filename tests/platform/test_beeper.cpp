#include "platform/Beeper.h"
#include "support/FileBytes.h"
#include "support/WaveSamples.h"

#include <QtTest>

class TestBeeper : public QObject
{
    Q_OBJECT

private slots:
    // Never chime on the speakers of the machine running the tests.
    void initTestCase() { qputenv("PULSE_SERVER", QByteArrayLiteral("unix:/nonexistent/lantern-no-sound")); }

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
        const auto level = [&](qsizetype from) {
            double sum = 0;
            for (qsizetype i = from; i < from + 1764; ++i)
                sum += double(wave.samples[i]) * wave.samples[i];
            return sum;
        };
        QVERIFY(level(wave.samples.size() - 1764) < level(0) / 4);
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

QTEST_MAIN(TestBeeper)
#include "test_beeper.moc"
