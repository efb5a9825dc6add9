#include "platform/Beeper.h"
#include "support/WaveSamples.h"

#include <QtTest>

#include <cmath>

namespace {

// How strongly a pure tone of this frequency is present in a stretch of the
// samples (a single-bin Fourier transform), 1.0 being a full-scale sine.
double toneLevel(const QList<qint16> &samples, double frequency, qsizetype from, qsizetype count)
{
    double re = 0, im = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        re += samples[i] * std::cos(2 * M_PI * frequency * i / 44100);
        im += samples[i] * std::sin(2 * M_PI * frequency * i / 44100);
    }
    return 2 * std::hypot(re, im) / count / 32768.0;
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestBeeper : public QObject
{
    Q_OBJECT

private slots:
    // Never chime on the speakers of the machine running the tests.
    void initTestCase() { qputenv("PULSE_SERVER", QByteArrayLiteral("unix:/nonexistent/lantern-no-sound")); }

    void chimeIsAShortSoftTwoPartialTone()
    {
        const WaveSamples wave = WaveSamples::fromBytes(Beeper::chimeWave());
        QVERIFY2(wave.isValid(), qPrintable(wave.problem));
        QCOMPARE(wave.channels, 1);
        QCOMPARE(wave.sampleRate, 44100);
        QCOMPARE(wave.samples.size(), 44100 * 150 / 1000);
        // Audible, yet nowhere near full scale; starts and ends at rest, so it never clicks.
        QVERIFY2(wave.rms() > 0.03 && wave.peak() < 0.5, qPrintable(QString::number(wave.rms())));
        QVERIFY(qAbs(wave.samples.first()) < 100 && qAbs(wave.samples.last()) < 100);
        // Two partials, the octave over the fundamental, and it fades.
        const int window = 441 * 4; // 40 ms: whole periods of both partials
        const double low = toneLevel(wave.samples, 1046.5, 0, window);
        const double high = toneLevel(wave.samples, 2093.0, 0, window);
        QVERIFY2(low > 0.1 && high > 0.02 && high < low, qPrintable(QStringLiteral("%1 %2").arg(low).arg(high)));
        QVERIFY(toneLevel(wave.samples, 1500.0, 0, window) < 0.02);
        QVERIFY(toneLevel(wave.samples, 1046.5, wave.samples.size() - window, window) < low / 2);
    }

    // Without a device beeping returns at once, quietly, and may be repeated;
    // the chime is written to the cache once, and a damaged copy is replaced.
    void chimeFileIsWrittenOnceAndRepaired()
    {
        for (int i = 0; i < 3; ++i)
            Beeper::beep();
        const QString path = Beeper::chimePath();
        QCOMPARE(path, qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/lantern/beep.wav"));
        QCOMPARE(readAll(path), Beeper::chimeWave());
        const QDateTime written = QFileInfo(path).lastModified();
        QTest::qWait(20);
        QCOMPARE(Beeper::chimePath(), path);
        QCOMPARE(QFileInfo(path).lastModified(), written);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write("RIFF") == 4);
        file.close();
        QCOMPARE(Beeper::chimePath(), path);
        QCOMPARE(readAll(path), Beeper::chimeWave());
    }
};

QTEST_MAIN(TestBeeper)
#include "test_beeper.moc"
