#include "platform/Beeper.h"

#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QSoundEffect>
#include <QUrl>
#include <QtEndian>

#include <cmath>

namespace {

// A high C with its octave: bright enough to notice, soft enough not to startle.
constexpr double Fundamental = 1046.5;
constexpr double Overtone = 2 * Fundamental;
constexpr double FundamentalLevel = 0.28;
constexpr double OvertoneLevel = 0.10;
constexpr double AttackSeconds = 0.004;
constexpr double ReleaseSeconds = 0.012;
constexpr double BeepVolume = 0.6;

void appendU32(QByteArray &bytes, quint32 value)
{
    char raw[4];
    qToLittleEndian(value, raw);
    bytes.append(raw, 4);
}

void appendU16(QByteArray &bytes, quint16 value)
{
    char raw[2];
    qToLittleEndian(value, raw);
    bytes.append(raw, 2);
}

} // namespace

QByteArray Beeper::chimeWave()
{
    const int count = SampleRate * DurationMs / 1000;
    const quint32 dataBytes = quint32(count) * 2;

    QByteArray wave;
    wave.reserve(44 + int(dataBytes));
    wave.append("RIFF");
    appendU32(wave, 36 + dataBytes);
    wave.append("WAVEfmt ");
    appendU32(wave, 16);
    appendU16(wave, 1); // PCM
    appendU16(wave, 1); // mono
    appendU32(wave, SampleRate);
    appendU32(wave, SampleRate * 2);
    appendU16(wave, 2);
    appendU16(wave, 16);
    wave.append("data");
    appendU32(wave, dataBytes);

    const double duration = count / double(SampleRate);
    for (int i = 0; i < count; ++i) {
        const double t = i / double(SampleRate);
        // A quick rise avoids a click; the overtone dies away first, as on a bell.
        const double attack = qMin(1.0, t / AttackSeconds);
        const double release = qMin(1.0, (duration - t) / ReleaseSeconds);
        const double envelope = attack * release;
        const double value = envelope
            * (FundamentalLevel * std::exp(-t / 0.06) * std::sin(2 * M_PI * Fundamental * t)
               + OvertoneLevel * std::exp(-t / 0.03) * std::sin(2 * M_PI * Overtone * t));
        appendU16(wave, quint16(qint16(std::lround(value * 32767))));
    }
    return wave;
}

QString Beeper::chimePath()
{
    const QString folder = XdgPaths::cacheHome() + QStringLiteral("/lantern");
    const QString path = folder + QStringLiteral("/beep.wav");
    const QByteArray wave = chimeWave();

    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == wave)
        return path;

    QSaveFile file(path);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) || file.write(wave) != wave.size()
        || !file.commit()) {
        RuntimeLog::note("Beeper::chimePath", QStringLiteral("cannot write %1").arg(path));
        return {};
    }
    return path;
}

void Beeper::beep()
{
    static QSoundEffect *chime = nullptr;
    if (!chime) {
        const QString path = chimePath();
        if (path.isEmpty())
            return;
        chime = new QSoundEffect(QCoreApplication::instance());
        chime->setVolume(BeepVolume);
        chime->setSource(QUrl::fromLocalFile(path));
    }
    if (chime->status() == QSoundEffect::Error) {
        RuntimeLog::note("Beeper::beep", QStringLiteral("the chime cannot be played"));
        return;
    }
    // A chime still loading sounds as soon as it is ready.
    chime->play();
}
