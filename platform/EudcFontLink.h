#pragma once

#include <QString>

// The system's private-character font: on Linux, a per-user fontconfig file
// that adds the font's folder and appends its family to every font request, so
// that code points of the Private Use Area fall back to it in every program
// of the session; the running program also loads the font itself.
class EudcFontLink
{
public:
    // Lets go of the current font (false), or takes up the given font file
    // (true); an empty path unlinks.
    static void Enable(bool on, const QString &fontPath = QString());

    static QString configPath();
    // The family name inside a font file, empty when it is not a font.
    static QString familyOf(const QString &fontPath);
};
