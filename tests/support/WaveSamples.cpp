#include "support/WaveSamples.h"

#include <QFile>
#include <QtEndian>

#include <cmath>

namespace {

template<typename T>
T le(const QByteArray &bytes, qsizetype at)
{
    return qFromLittleEndian<T>(bytes.constData() + at);
}

} // namespace

WaveSamples WaveSamples::fromBytes(const QByteArray &bytes)
{
    WaveSamples wave;
    if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE") {
        wave.problem = QStringLiteral("not a RIFF WAVE file");
        return wave;
    }
    bool haveFormat = false;
    qsizetype at = 12;
    while (at + 8 <= bytes.size()) {
        const QByteArray id = bytes.mid(at, 4);
        const qsizetype size = le<quint32>(bytes, at + 4);
        const qsizetype body = at + 8;
        if (id == "fmt " && size >= 16 && body + 16 <= bytes.size()) {
            const quint16 format = le<quint16>(bytes, body);
            wave.channels = le<quint16>(bytes, body + 2);
            wave.sampleRate = int(le<quint32>(bytes, body + 4));
            wave.bitsPerSample = le<quint16>(bytes, body + 14);
            // WAVE_FORMAT_EXTENSIBLE carries PCM as its sub-format.
            if (format != 1 && format != 0xFFFE) {
                wave.problem = QStringLiteral("format %1 is not PCM").arg(format);
                return wave;
            }
            haveFormat = true;
        } else if (id == "data") {
            if (!haveFormat || wave.bitsPerSample != 16) {
                wave.problem = QStringLiteral("data before a 16-bit format chunk");
                return wave;
            }
            const qsizetype available = qMin(size, bytes.size() - body);
            wave.samples.resize(available / 2);
            for (qsizetype i = 0; i < wave.samples.size(); ++i)
                wave.samples[i] = le<qint16>(bytes, body + 2 * i);
            return wave;
        }
        at = body + size + (size & 1);
    }
    wave.problem = QStringLiteral("no data chunk");
    return wave;
}

WaveSamples WaveSamples::fromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        WaveSamples wave;
        wave.problem = QStringLiteral("cannot open %1").arg(path);
        return wave;
    }
    return fromBytes(file.readAll());
}

double WaveSamples::seconds() const
{
    if (channels <= 0 || sampleRate <= 0)
        return 0;
    return double(samples.size()) / channels / sampleRate;
}

double WaveSamples::rms() const
{
    if (samples.isEmpty())
        return 0;
    double sum = 0;
    for (qint16 s : samples)
        sum += double(s) * s;
    return std::sqrt(sum / samples.size()) / 32768.0;
}

double WaveSamples::peak() const
{
    int largest = 0;
    for (qint16 s : samples)
        largest = qMax(largest, qAbs(int(s)));
    return largest / 32768.0;
}
