#pragma once

#include <QString>
#include <QStringList>

// The Japanese voice behind the control's two Japanese TTS mode identifiers.
// Open JTalk reads Japanese well and is used whenever it is installed with a
// dictionary and an HTS voice; espeak-ng stands in when it is not; with
// neither, the voices count as not installed and characters only show their
// balloons.
class Voice
{
public:
    enum class Engine { None,
                        OpenJTalk,
                        EspeakNg };

    // The two mode identifiers that mean "the Japanese voice".
    static const QStringList &japaneseModeIds();
    // Whether this identifier (braces included, letter case ignored) names a
    // voice that can speak on this machine.
    static bool isInstalled(const QString &ttsModeId);

    // Looked up on each call: a voice installed while the program runs is found.
    static Engine installedEngine();

    // How to run the engine for one piece of text that is fed on its
    // standard input and written as a WAV file to outputPath.
    static QString program(Engine engine);
    static QStringList arguments(Engine engine, const QString &outputPath);

    // The text as the engine should read it: clock times such as "11:16"
    // become "11時16分", which Open JTalk otherwise reads as two numbers.
    static QString reading(const QString &text);
};
