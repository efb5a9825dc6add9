#include "OwlArtist.h"
#include "ArtistTools.h"

#include <QLinearGradient>
#include <QPainterPath>

namespace {

const QPointF Middle(100, 128);
const QPointF Feet(100, 222);

const QColor Feather(0x8E, 0x6A, 0x48);
const QColor FeatherDark(0x6B, 0x4C, 0x32);
const QColor Belly(0xF1, 0xDF, 0xC0);
const QColor Disc(0xF7, 0xEB, 0xD5);
const QColor Amber(0xF2, 0xA5, 0x16);
const QColor Beak(0xE8, 0xA3, 0x3A);

void drawWing(QPainter &painter, QPointF shoulder, double angle, bool left)
{
    painter.save();
    painter.translate(shoulder);
    painter.rotate(left ? ArtistTools::armAngle(angle) : -ArtistTools::armAngle(angle));
    QPainterPath wing;
    wing.moveTo(0, 0);
    wing.cubicTo(-20, 12, -16, 62, 0, 78);
    wing.cubicTo(16, 62, 20, 12, 0, 0);
    painter.setPen(QPen(FeatherDark.darker(130), 2));
    painter.setBrush(FeatherDark);
    painter.drawPath(wing);
    painter.setPen(QPen(Feather.lighter(125), 1.6, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 3; ++i)
        painter.drawLine(QPointF(-6 + 6 * i, 40 + 6 * i), QPointF(-2 + 3 * i, 66));
    painter.restore();
}

void drawOwlEye(QPainter &painter, QPointF centre, const Pose &pose)
{
    painter.setPen(QPen(QColor(0xD9, 0xBF, 0x98), 2));
    painter.setBrush(Disc);
    painter.drawEllipse(centre, 30, 30);

    if ((pose.happyEyes && pose.eyes < 0.5) || pose.eyes < 0.15) {
        ArtistTools::drawSimpleEye(painter, centre, pose, 24, 22, FeatherDark.darker(150));
        return;
    }
    const QPointF look(pose.lookX * 6, pose.lookY * 5);
    painter.setPen(QPen(QColor(0xC7, 0x7B, 0x0A), 2.5));
    painter.setBrush(Amber);
    painter.drawEllipse(centre, 18, 18);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x20, 0x14, 0x10));
    painter.drawEllipse(centre + look, 10, 10);
    painter.setBrush(Qt::white);
    painter.drawEllipse(centre + look + QPointF(-4, -4), 3.8, 3.8);

    // A half-shut eye: the lid comes down from above.
    if (pose.eyes < 0.95) {
        const double lid = (1.0 - pose.eyes) * 38;
        painter.save();
        QPainterPath iris;
        iris.addEllipse(centre, 19.5, 19.5);
        painter.setClipPath(iris);
        painter.setBrush(QColor(0xD8, 0xC1, 0x9B));
        painter.drawRect(QRectF(centre.x() - 20, centre.y() - 20, 40, lid));
        painter.restore();
    }
}

void drawBeak(QPainter &painter, QPointF tip, double open)
{
    const double gap = 9 * open;
    QPainterPath upper;
    upper.moveTo(tip + QPointF(0, -10));
    upper.lineTo(tip + QPointF(-8, 0));
    upper.quadTo(tip + QPointF(0, 4), tip + QPointF(8, 0));
    upper.closeSubpath();
    QPainterPath lower;
    lower.moveTo(tip + QPointF(-6, 2 + gap));
    lower.quadTo(tip + QPointF(0, 5 + gap), tip + QPointF(6, 2 + gap));
    lower.lineTo(tip + QPointF(0, 11 + gap));
    lower.closeSubpath();
    if (gap > 0.5) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x6B, 0x2A, 0x1A));
        painter.drawEllipse(tip + QPointF(0, 2 + gap / 2), 6, gap / 2 + 2);
    }
    painter.setPen(QPen(Beak.darker(140), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Beak);
    painter.drawPath(lower);
    painter.drawPath(upper);
}

} // namespace

void OwlArtist::draw(QPainter &painter, const Pose &pose) const
{
    painter.save();
    ArtistTools::placeFigure(painter, pose, Middle, Feet);

    // Feet first, so that the body sits on them.
    painter.setPen(QPen(Beak.darker(140), 1.5));
    painter.setBrush(Beak);
    for (const double x : {84.0, 116.0}) {
        for (const double toe : {-7.0, 0.0, 7.0})
            painter.drawEllipse(QPointF(x + toe, 214), 4.5, 7);
    }

    // Ear tufts.
    painter.setPen(QPen(FeatherDark.darker(130), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(FeatherDark);
    const double tilt = pose.headTilt;
    painter.drawPolygon(QPolygonF{QPointF(52, 70), QPointF(56 + tilt * 0.4, 22), QPointF(86, 52)});
    painter.drawPolygon(QPolygonF{QPointF(148, 70), QPointF(144 + tilt * 0.4, 22), QPointF(114, 52)});

    // The round body.
    QLinearGradient body(QPointF(100, 40), QPointF(100, 216));
    body.setColorAt(0.0, Feather.lighter(112));
    body.setColorAt(1.0, Feather.darker(115));
    painter.setPen(QPen(FeatherDark.darker(120), 2.5));
    painter.setBrush(body);
    painter.drawEllipse(QRectF(36, 40, 128, 176));

    // The cream belly with rows of little feathers.
    painter.setPen(Qt::NoPen);
    painter.setBrush(Belly);
    painter.drawEllipse(QRectF(62, 118, 76, 88));
    painter.setPen(QPen(QColor(0xC9, 0xA5, 0x7E), 2, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    for (int row = 0; row < 4; ++row) {
        const double y = 140 + row * 15;
        const int count = row % 2 == 0 ? 3 : 2;
        for (int i = 0; i < count; ++i) {
            const double x = 100 + (i - (count - 1) / 2.0) * 16;
            QPainterPath vee;
            vee.moveTo(x - 5, y);
            vee.quadTo(x, y + 6, x + 5, y);
            painter.drawPath(vee);
        }
    }

    drawWing(painter, QPointF(44, 116), pose.leftArm, true);
    drawWing(painter, QPointF(156, 116), pose.rightArm, false);

    // The face: owls tilt their heads a lot.
    const QPointF face(100, 100 + 10 * pose.bow);
    painter.translate(face);
    painter.rotate(tilt);
    painter.translate(-face);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xFF, 0x8A, 0x95, 50 + int(90 * pose.glow)));
    painter.drawEllipse(face + QPointF(-40, 26), 10, 6);
    painter.drawEllipse(face + QPointF(40, 26), 10, 6);

    drawOwlEye(painter, face + QPointF(-23, -2), pose);
    drawOwlEye(painter, face + QPointF(23, -2), pose);
    drawBeak(painter, face + QPointF(0, 22), pose.mouth);

    painter.restore();
}
