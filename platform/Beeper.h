#pragma once

#include <QByteArray>
#include <QString>

// The system beep, as a soft chime of our own: two partials that fade out
// within a moment. The tone is made once, kept as a WAV in the per-user cache
// and played like any other short sound. Without an audio output the beep
// simply does not sound.
class Beeper
{
public:
    static constexpr int SampleRate = 44100;
    static constexpr int DurationMs = 150;

    static void beep();

    // The chime as a complete 16-bit mono WAV file.
    static QByteArray chimeWave();
    // The chime's file in the cache, written when missing or different;
    // empty when it cannot be written.
    static QString chimePath();
};
