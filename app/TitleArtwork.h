#pragma once

#include <QImage>
#include <QSize>
#include <QString>

// The splash picture: a lantern glowing on a warm evening sky, with the
// program's name. The build draws it once into the skin folder, because
// lettering in the large Japanese faces takes longer than the splash may.
class TitleArtwork
{
public:
    static QImage draw(const QSize &size);
    // The picture's file in the skin folder, and the size it is drawn at.
    static QString fileName();
    static QSize size();
};
