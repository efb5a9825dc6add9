#pragma once

#include <QList>
#include <QString>

// A clip of 16-bit PCM audio as a WAV file holds it: enough to read what a
// speech synthesizer writes, cut its silent ends, put clips together with
// pauses between them and write the result for playback.
class WaveAudio
{
public:
    WaveAudio() = default;
    WaveAudio(int sampleRate, int channels, const QList<qint16> &samples = {});

    // Reads a PCM 16-bit WAV file; false (and an empty clip) for anything else.
    bool load(const QString &path);
    bool save(const QString &path) const;

    int sampleRate() const { return m_sampleRate; }
    int channels() const { return m_channels; }
    const QList<qint16> &samples() const { return m_samples; }
    qint64 frameCount() const;
    qint64 durationMs() const;
    bool isEmpty() const { return m_samples.isEmpty(); }

    // Removes the quiet lead-in and tail: everything before the first and after
    // the last sample louder than the threshold, keeping a short margin so
    // that soft consonants at the edges survive.
    void trimSilence(int threshold = 320, int marginMs = 15);
    void appendSilence(int milliseconds);
    // Appends another clip of the same rate and channel count; false otherwise.
    bool append(const WaveAudio &other);

    int peak() const;
    double rms() const;

private:
    int m_sampleRate = 0;
    int m_channels = 0;
    QList<qint16> m_samples; // interleaved
};
