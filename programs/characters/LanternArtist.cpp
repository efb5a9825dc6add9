#include "LanternArtist.h"
#include "ArtistTools.h"

#include <QPainterPath>
#include <QRadialGradient>

namespace {

const QPointF Middle(100, 118);
const QPointF Feet(100, 226);
constexpr double RadiusX = 70;
constexpr double RadiusY = 78;

const QColor Wood(0x3B, 0x2A, 0x20);
const QColor Wire(0x4A, 0x32, 0x26);
const QColor Ink(0x2B, 0x1B, 0x17);
const QColor Paper(0xD9, 0x48, 0x3B);
const QColor Rib(0xA8, 0x34, 0x2A, 110);

void drawArm(QPainter &painter, QPointF shoulder, double angle, bool left)
{
    const QPointF hand = ArtistTools::armEnd(shoulder, ArtistTools::armAngle(angle), 40, left);
    painter.setPen(QPen(Wire, 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(shoulder, hand);
    painter.setPen(QPen(Wire, 2));
    painter.setBrush(QColor(0xF5, 0xD7, 0xA1));
    painter.drawEllipse(hand, 7.5, 7.5);
}

void drawMouth(QPainter &painter, QPointF centre, double open)
{
    if (open < 0.1) {
        QPainterPath smile;
        smile.moveTo(centre + QPointF(-10, -3));
        smile.quadTo(centre + QPointF(0, 7), centre + QPointF(10, -3));
        painter.setPen(QPen(QColor(0x5A, 0x1E, 0x18), 3, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(smile);
        return;
    }
    const double depth = 4 + 12 * open;
    QPainterPath mouth;
    mouth.moveTo(centre + QPointF(-11, -3));
    mouth.quadTo(centre + QPointF(0, -5), centre + QPointF(11, -3));
    mouth.quadTo(centre + QPointF(9, depth), centre + QPointF(0, depth));
    mouth.quadTo(centre + QPointF(-9, depth), centre + QPointF(-11, -3));
    painter.setPen(QPen(QColor(0x5A, 0x1E, 0x18), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(0x7A, 0x20, 0x20));
    painter.drawPath(mouth);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xF0, 0x7A, 0x80));
    painter.drawEllipse(centre + QPointF(0, depth - 4), 6, 3 + 1.5 * open);
}

} // namespace

void LanternArtist::draw(QPainter &painter, const Pose &pose) const
{
    painter.save();
    ArtistTools::placeFigure(painter, pose, Middle, Feet);

    // The light spilling out around the paper.
    QRadialGradient halo(Middle, 104);
    halo.setColorAt(0.55, QColor(255, 196, 90, int(70 * pose.glow)));
    halo.setColorAt(1.0, QColor(255, 196, 90, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(halo);
    painter.drawEllipse(Middle, 104, 110);

    // Hanging wire and the wooden rims.
    QPainterPath handle;
    handle.moveTo(82, 30);
    handle.cubicTo(84, 6, 116, 6, 118, 30);
    painter.setPen(QPen(Wire, 4, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(handle);

    // The paper body: lit from inside, brighter with more glow.
    QRadialGradient light(Middle + QPointF(-8, -12), 92);
    light.setColorAt(0.0, QColor(255, 236, 170).lighter(100 + int(10 * pose.glow)));
    light.setColorAt(0.35 + 0.15 * (1.0 - pose.glow), QColor(0xF6, 0x9A, 0x5E));
    light.setColorAt(1.0, Paper);
    painter.setPen(QPen(QColor(0xB0, 0x3A, 0x2E), 2.5));
    painter.setBrush(light);
    painter.drawEllipse(Middle, RadiusX, RadiusY);

    // The bamboo ribs that give the paper its shape.
    painter.setPen(QPen(Rib, 1.8));
    painter.setBrush(Qt::NoBrush);
    for (double y = Middle.y() - 60; y <= Middle.y() + 60; y += 20) {
        const double t = (y - Middle.y()) / RadiusY;
        const double half = RadiusX * std::sqrt(std::max(0.0, 1.0 - t * t));
        QPainterPath rib;
        rib.moveTo(Middle.x() - half, y);
        rib.quadTo(Middle.x(), y + 7, Middle.x() + half, y);
        painter.drawPath(rib);
    }

    painter.setPen(QPen(Wood.lighter(150), 1.5));
    painter.setBrush(Wood);
    painter.drawRoundedRect(QRectF(62, 28, 76, 18), 6, 6);
    painter.drawRoundedRect(QRectF(66, 190, 68, 16), 6, 6);

    // The tassel below.
    painter.setPen(QPen(QColor(0xE0, 0xB0, 0x40), 2.5, Qt::SolidLine, Qt::RoundCap));
    for (int x = 88; x <= 112; x += 6)
        painter.drawLine(QPointF(x, 207), QPointF(x + (x - 100) * 0.15, 224));

    drawArm(painter, QPointF(34, 128), pose.leftArm, true);
    drawArm(painter, QPointF(166, 128), pose.rightArm, false);

    // The face, which tilts on its own and sinks a little in a bow.
    const QPointF face(Middle.x(), 112 + 14 * pose.bow);
    painter.translate(face);
    painter.rotate(pose.headTilt);
    painter.translate(-face);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xFF, 0x6F, 0x7D, 90 + int(60 * pose.glow)));
    painter.drawEllipse(face + QPointF(-34, 19), 10, 6);
    painter.drawEllipse(face + QPointF(34, 19), 10, 6);

    ArtistTools::drawSimpleEye(painter, face + QPointF(-22, 0), pose, 14, 19, Ink);
    ArtistTools::drawSimpleEye(painter, face + QPointF(22, 0), pose, 14, 19, Ink);
    drawMouth(painter, face + QPointF(0, 22), pose.mouth);

    painter.restore();
}
