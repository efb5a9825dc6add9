#pragma once

#include "Pose.h"

#include <QColor>
#include <QSize>
#include <QString>

class QPainter;

// Draws one character in any pose, on a transparent picture of its size.
class CharacterArtist
{
public:
    virtual ~CharacterArtist() = default;

    virtual QString fileName() const = 0; // "LANTERN.ACS"
    virtual QString name() const = 0;     // shown to people
    virtual QString description() const = 0;
    // Artists draw on a 200 x 240 design; the picture leaves room around it
    // for arms that reach out and for leaning.
    static constexpr int DesignWidth = 200;
    static constexpr int DesignHeight = 240;
    virtual QSize size() const { return QSize(250, 256); }
    virtual QColor balloonBackground() const = 0;
    virtual QColor balloonBorder() const = 0;
    virtual QColor balloonText() const = 0;

    virtual void draw(QPainter &painter, const Pose &pose) const = 0;
};
