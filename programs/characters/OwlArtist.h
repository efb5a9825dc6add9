#pragma once

#include "CharacterArtist.h"

// "Fukurō": a round brown owl with big amber eyes, a cream belly and wings
// that wave and point.
class OwlArtist : public CharacterArtist
{
public:
    QString fileName() const override { return QStringLiteral("FUKURO.ACS"); }
    QString name() const override { return QStringLiteral("ふくろう"); }
    QString description() const override { return QStringLiteral("まるい ふくろう"); }
    QColor balloonBackground() const override { return QColor(0xEE, 0xF6, 0xEF); }
    QColor balloonBorder() const override { return QColor(0x7F, 0xA8, 0x8E); }
    QColor balloonText() const override { return QColor(0x2F, 0x4A, 0x3A); }

    void draw(QPainter &painter, const Pose &pose) const override;
};
