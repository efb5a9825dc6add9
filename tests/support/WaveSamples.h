#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>
#include <QtEndian>

#include <cmath>

// The samples of a 16-bit PCM WAV file, read independently of the code that
// wrote it, so that tests can measure what a listener would hear.
struct WaveSamples
{
    int channels = 0;
    int sampleRate = 0;
    int bitsPerSample = 0;
    QList<qint16> samples; // interleaved
    QString problem;       // why the file could not be read, empty when it could

    static WaveSamples fromBytes(const QByteArray &bytes)
    {
        const auto le = [&bytes](auto type, qsizetype at) {
            return qFromLittleEndian<decltype(type)>(bytes.constData() + at);
        };
        WaveSamples wave;
        const auto failed = [&wave](const QString &why) {
            wave.problem = why;
            return wave;
        };
        if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE")
            return failed(QStringLiteral("not a RIFF WAVE file"));
        for (qsizetype at = 12; at + 8 <= bytes.size();) {
            const QByteArray id = bytes.mid(at, 4);
            const qsizetype size = le(quint32(), at + 4);
            const qsizetype body = at + 8;
            if (id == "fmt " && size >= 16 && body + 16 <= bytes.size()) {
                const quint16 format = le(quint16(), body);
                wave.channels = le(quint16(), body + 2);
                wave.sampleRate = int(le(quint32(), body + 4));
                wave.bitsPerSample = le(quint16(), body + 14);
                // WAVE_FORMAT_EXTENSIBLE carries PCM as its sub-format.
                if (format != 1 && format != 0xFFFE)
                    return failed(QStringLiteral("format %1 is not PCM").arg(format));
            } else if (id == "data") {
                if (wave.bitsPerSample != 16)
                    return failed(QStringLiteral("data before a 16-bit format chunk"));
                wave.samples.resize(qMin(size, bytes.size() - body) / 2);
                for (qsizetype i = 0; i < wave.samples.size(); ++i)
                    wave.samples[i] = le(qint16(), body + 2 * i);
                return wave;
            }
            at = body + size + (size & 1);
        }
        return failed(QStringLiteral("no data chunk"));
    }

    static WaveSamples fromFile(const QString &path)
    {
        QFile file(path);
        WaveSamples unread;
        unread.problem = QStringLiteral("cannot open %1").arg(path);
        return file.open(QIODevice::ReadOnly) ? fromBytes(file.readAll()) : unread;
    }

    bool isValid() const { return problem.isEmpty(); }

    double seconds() const
    {
        return channels > 0 && sampleRate > 0 ? double(samples.size()) / channels / sampleRate : 0;
    }

    // Root mean square over all samples, 1.0 being full scale.
    double rms() const
    {
        double sum = 0;
        for (qint16 s : samples)
            sum += double(s) * s;
        return samples.isEmpty() ? 0 : std::sqrt(sum / samples.size()) / 32768.0;
    }

    double peak() const
    {
        int largest = 0;
        for (qint16 s : samples)
            largest = qMax(largest, qAbs(int(s)));
        return largest / 32768.0;
    }
};
