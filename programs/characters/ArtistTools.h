#pragma once

#include "Pose.h"

#include <QPainter>
#include <QPainterPath>
#include <QPointF>

#include <algorithm>
#include <cmath>

// Drawing steps both artists share.
namespace ArtistTools {

// Places the whole figure: grows from its middle when shown, leans from its
// feet, bounces up and down.
inline void placeFigure(QPainter &painter, const Pose &pose, QPointF middle, QPointF feet)
{
    painter.setOpacity(std::clamp(pose.opacity, 0.0, 1.0));
    painter.translate(middle.x(), middle.y() + pose.bob);
    painter.scale(pose.scale, pose.scale);
    painter.translate(-middle.x(), -middle.y());
    painter.translate(feet);
    painter.rotate(pose.tilt);
    painter.scale(1.0, 1.0 - 0.06 * pose.bow);
    painter.translate(-feet);
}

// An arm's drawn angle: even "hanging" arms stand a little away from the body.
inline double armAngle(double poseAngle)
{
    return 20.0 + poseAngle * 0.88;
}

// The end of an arm of the given length from its shoulder; the left arm
// swings out to the left, the right one to the right.
inline QPointF armEnd(QPointF shoulder, double angleDegrees, double length, bool left)
{
    const double a = angleDegrees * M_PI / 180.0;
    const double side = left ? -1.0 : 1.0;
    return shoulder + QPointF(side * std::sin(a) * length, std::cos(a) * length);
}

// Eyes that blink, smile or look around; `size` is the open eye's height.
inline void drawSimpleEye(QPainter &painter, QPointF centre, const Pose &pose, double width, double height,
                          const QColor &ink)
{
    const QPointF look(pose.lookX * width * 0.3, pose.lookY * height * 0.2);
    if (pose.happyEyes && pose.eyes < 0.5) {
        QPainterPath arch;
        arch.moveTo(centre + QPointF(-width * 0.7, height * 0.15));
        arch.quadTo(centre + QPointF(0, -height * 0.55), centre + QPointF(width * 0.7, height * 0.15));
        painter.setPen(QPen(ink, 3.5, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(arch);
        return;
    }
    if (pose.eyes < 0.15) {
        QPainterPath shut;
        shut.moveTo(centre + QPointF(-width * 0.7, 0));
        shut.quadTo(centre + QPointF(0, height * 0.4), centre + QPointF(width * 0.7, 0));
        painter.setPen(QPen(ink, 3.5, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(shut);
        return;
    }
    const double h = height * pose.eyes;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(centre + look, width / 2, h / 2);
    painter.setBrush(Qt::white);
    const double shine = std::min(width, h) * 0.22;
    painter.drawEllipse(centre + look + QPointF(-width * 0.18, -h * 0.2), shine, shine);
}

} // namespace ArtistTools
