#include "platform/Beeper.h"
#include "support/WaveSamples.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <cmath>

namespace {

// How strongly a pure tone of this frequency is present in a stretch of the
// samples (a single-bin Fourier transform), 1.0 being a full-scale sine.
double toneLevel(const QList<qint16> &samples, int sampleRate, double frequency, int from, int count)
{
    double re = 0, im = 0;
    for (int i = from; i < from + count; ++i) {
        const double phase = 2 * M_PI * frequency * i / sampleRate;
        re += samples[i] * std::cos(phase);
        im += samples[i] * std::sin(phase);
    }
    return 2 * std::hypot(re, im) / count / 32768.0;
}

} // namespace

class TestBeeper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void chimeIsAShortSoftTwoPartialTone();
    void chimeFileIsWrittenOnceAndRepaired();
    void beepWithoutAudioOutputIsHarmless();
};

void TestBeeper::initTestCase()
{
    // Never chime on the speakers of the machine running the tests.
    qputenv("PULSE_SERVER", QByteArrayLiteral("unix:/nonexistent/lantern-no-sound"));
}

void TestBeeper::chimeIsAShortSoftTwoPartialTone()
{
    const WaveSamples wave = WaveSamples::fromBytes(Beeper::chimeWave());
    QVERIFY2(wave.isValid(), qPrintable(wave.problem));
    QCOMPARE(wave.channels, 1);
    QCOMPARE(wave.sampleRate, 44100);
    QCOMPARE(wave.samples.size(), 44100 * 150 / 1000);
    QCOMPARE(wave.seconds(), 0.15);

    // Audible, yet nowhere near full scale.
    QVERIFY2(wave.rms() > 0.03, qPrintable(QString::number(wave.rms())));
    QVERIFY2(wave.peak() < 0.5, qPrintable(QString::number(wave.peak())));

    // Starts and ends at rest, so it never clicks.
    QVERIFY(qAbs(wave.samples.first()) < 100);
    QVERIFY(qAbs(wave.samples.last()) < 100);

    // Two partials, the octave over the fundamental, and it fades.
    const int window = 441 * 4; // 40 ms: whole periods of both partials
    const double low = toneLevel(wave.samples, 44100, 1046.5, 0, window);
    const double high = toneLevel(wave.samples, 44100, 2093.0, 0, window);
    const double off = toneLevel(wave.samples, 44100, 1500.0, 0, window);
    QVERIFY2(low > 0.1 && high > 0.02 && high < low, qPrintable(QStringLiteral("%1 %2").arg(low).arg(high)));
    QVERIFY2(off < 0.02, qPrintable(QString::number(off)));
    const double late = toneLevel(wave.samples, 44100, 1046.5, wave.samples.size() - window, window);
    QVERIFY2(late < low / 2, qPrintable(QString::number(late)));
}

void TestBeeper::chimeFileIsWrittenOnceAndRepaired()
{
    const QString path = Beeper::chimePath();
    QCOMPARE(path, qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/lantern/beep.wav"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), Beeper::chimeWave());
    file.close();

    const QDateTime written = QFileInfo(path).lastModified();
    QTest::qWait(20);
    QCOMPARE(Beeper::chimePath(), path);
    QCOMPARE(QFileInfo(path).lastModified(), written);

    // A damaged file in the cache is replaced, not played.
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("RIFF");
    file.close();
    QCOMPARE(Beeper::chimePath(), path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), Beeper::chimeWave());
}

void TestBeeper::beepWithoutAudioOutputIsHarmless()
{
    // Without a device beeping returns at once, quietly, and may be repeated.
    for (int i = 0; i < 3; ++i) {
        Beeper::beep();
        QTest::qWait(50);
    }
    QVERIFY(QFileInfo::exists(Beeper::chimePath()));
}

QTEST_MAIN(TestBeeper)
#include "test_beeper.moc"
