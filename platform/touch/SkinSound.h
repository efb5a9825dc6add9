#pragma once

#include <QString>

// Plays the short WAV sounds of the skin. A sound is opened the first time it
// is played and then kept, so start-up stays quick and a click answers at
// once the second time. A missing or broken file is noted and skipped.
class SkinSound
{
public:
    // Starts playing the file; false when there is nothing to play.
    static bool play(const QString &path);
};
