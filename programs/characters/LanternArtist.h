#pragma once

#include "CharacterArtist.h"

// "Chōchin": a round red paper lantern with a warm light inside, a kind face
// and two little wire arms.
class LanternArtist : public CharacterArtist
{
public:
    QString fileName() const override { return QStringLiteral("LANTERN.ACS"); }
    QString name() const override { return QStringLiteral("ちょうちん"); }
    QString description() const override { return QStringLiteral("あかりの ともる ちょうちん"); }
    QColor balloonBackground() const override { return QColor(0xFF, 0xF6, 0xE5); }
    QColor balloonBorder() const override { return QColor(0xE3, 0x8B, 0x5B); }
    QColor balloonText() const override { return QColor(0x5A, 0x2E, 0x1E); }

    void draw(QPainter &painter, const Pose &pose) const override;
};
