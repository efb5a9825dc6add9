#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The samples of a 16-bit PCM WAV file, read independently of the code that
// wrote it, so that tests can measure what a listener would hear.
struct WaveSamples
{
    int channels = 0;
    int sampleRate = 0;
    int bitsPerSample = 0;
    QList<qint16> samples; // interleaved
    QString problem;       // why the file could not be read, empty when it could

    static WaveSamples fromBytes(const QByteArray &bytes);
    static WaveSamples fromFile(const QString &path);

    bool isValid() const { return problem.isEmpty(); }
    double seconds() const;
    // Root mean square over all samples, 1.0 being full scale.
    double rms() const;
    double peak() const;
};
