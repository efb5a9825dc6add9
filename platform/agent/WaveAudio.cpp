#include "platform/agent/WaveAudio.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>

#include <cmath>
#include <cstdlib>

namespace {

quint32 le32(const char *p)
{
    return qFromLittleEndian<quint32>(p);
}

quint16 le16(const char *p)
{
    return qFromLittleEndian<quint16>(p);
}

void put32(QByteArray &out, quint32 value)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

void put16(QByteArray &out, quint16 value)
{
    char bytes[2];
    qToLittleEndian(value, bytes);
    out.append(bytes, 2);
}

constexpr quint16 FormatPcm = 1;
constexpr quint16 FormatExtensible = 0xFFFE;

} // namespace

WaveAudio::WaveAudio(int sampleRate, int channels, const QList<qint16> &samples)
    : m_sampleRate(sampleRate)
    , m_channels(channels)
    , m_samples(samples)
{
}

bool WaveAudio::load(const QString &path)
{
    *this = WaveAudio();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE")
        return false;

    int sampleRate = 0;
    int channels = 0;
    bool formatOk = false;
    qsizetype pos = 12;
    while (pos + 8 <= bytes.size()) {
        const QByteArray id = bytes.mid(pos, 4);
        // Streaming writers leave the size at its maximum: take what is there.
        const qsizetype size = std::min<qsizetype>(le32(bytes.constData() + pos + 4), bytes.size() - pos - 8);
        const char *body = bytes.constData() + pos + 8;
        if (id == "fmt " && size >= 16) {
            const quint16 format = le16(body);
            channels = le16(body + 2);
            sampleRate = int(le32(body + 4));
            const quint16 bits = le16(body + 14);
            formatOk = (format == FormatPcm || format == FormatExtensible) && bits == 16
                && channels > 0 && channels <= 8 && sampleRate > 0;
        } else if (id == "data") {
            if (!formatOk)
                return false;
            m_sampleRate = sampleRate;
            m_channels = channels;
            const qsizetype count = size / 2;
            m_samples.resize(count);
            for (qsizetype i = 0; i < count; ++i)
                m_samples[i] = qint16(le16(body + 2 * i));
            return true;
        }
        pos += 8 + size + (size & 1);
    }
    return false;
}

bool WaveAudio::save(const QString &path) const
{
    if (m_sampleRate <= 0 || m_channels <= 0)
        return false;
    const quint32 dataBytes = quint32(m_samples.size() * 2);
    QByteArray out;
    out.reserve(44 + dataBytes);
    out.append("RIFF");
    put32(out, 36 + dataBytes);
    out.append("WAVEfmt ");
    put32(out, 16);
    put16(out, FormatPcm);
    put16(out, quint16(m_channels));
    put32(out, quint32(m_sampleRate));
    put32(out, quint32(m_sampleRate * m_channels * 2));
    put16(out, quint16(m_channels * 2));
    put16(out, 16);
    out.append("data");
    put32(out, dataBytes);
    for (const qint16 sample : m_samples)
        put16(out, quint16(sample));

    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(out) == out.size() && file.commit();
}

qint64 WaveAudio::frameCount() const
{
    return m_channels > 0 ? m_samples.size() / m_channels : 0;
}

qint64 WaveAudio::durationMs() const
{
    return m_sampleRate > 0 ? frameCount() * 1000 / m_sampleRate : 0;
}

void WaveAudio::trimSilence(int threshold, int marginMs)
{
    const qint64 frames = frameCount();
    auto loud = [&](qint64 frame) {
        for (int c = 0; c < m_channels; ++c) {
            if (std::abs(int(m_samples[frame * m_channels + c])) > threshold)
                return true;
        }
        return false;
    };
    qint64 first = 0;
    while (first < frames && !loud(first))
        ++first;
    if (first == frames) {
        m_samples.clear();
        return;
    }
    qint64 last = frames - 1;
    while (last > first && !loud(last))
        --last;
    const qint64 margin = qint64(m_sampleRate) * marginMs / 1000;
    first = std::max<qint64>(0, first - margin);
    last = std::min<qint64>(frames - 1, last + margin);
    m_samples = m_samples.mid(first * m_channels, (last - first + 1) * m_channels);
}

void WaveAudio::appendSilence(int milliseconds)
{
    if (milliseconds <= 0 || m_sampleRate <= 0)
        return;
    const qint64 frames = qint64(m_sampleRate) * milliseconds / 1000;
    m_samples.resize(m_samples.size() + frames * m_channels, 0);
}

bool WaveAudio::append(const WaveAudio &other)
{
    if (other.isEmpty())
        return true;
    if (m_sampleRate == 0 && m_samples.isEmpty()) {
        m_sampleRate = other.m_sampleRate;
        m_channels = other.m_channels;
    }
    if (other.m_sampleRate != m_sampleRate || other.m_channels != m_channels)
        return false;
    m_samples.append(other.m_samples);
    return true;
}

int WaveAudio::peak() const
{
    int result = 0;
    for (const qint16 sample : m_samples)
        result = std::max(result, std::abs(int(sample)));
    return result;
}

double WaveAudio::rms() const
{
    if (m_samples.isEmpty())
        return 0.0;
    double sum = 0.0;
    for (const qint16 sample : m_samples)
        sum += double(sample) * double(sample);
    return std::sqrt(sum / double(m_samples.size()));
}
