#include "workspace/ChoiceIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace {

const QColor Ink(0x4a, 0x3b, 0x2a);

void drawDie(QPainter &p, qreal s)
{
    p.translate(s / 2, s / 2);
    p.rotate(-12);
    const QRectF face(-s * 0.36, -s * 0.36, s * 0.72, s * 0.72);
    p.setPen(QPen(Ink, s / 24));
    p.setBrush(Qt::white);
    p.drawRoundedRect(face, s * 0.12, s * 0.12);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xc0, 0x30, 0x30));
    const qreal d = s * 0.19, r = s * 0.065;
    for (const QPointF &pip : {QPointF(-d, -d), QPointF(d, -d), QPointF(0, 0), QPointF(-d, d), QPointF(d, d)})
        p.drawEllipse(pip, r, r);
}

void drawSeasons(QPainter &p, qreal s)
{
    const QRectF circle(s * 0.12, s * 0.12, s * 0.76, s * 0.76);
    const QColor colours[4] = {QColor(0xf4, 0xa7, 0xc0), QColor(0x5c, 0xb8, 0x5c),
                               QColor(0xe8, 0x8a, 0x3a), QColor(0x8c, 0xc4, 0xee)};
    p.setPen(QPen(Qt::white, s / 28));
    for (int quarter = 0; quarter < 4; ++quarter) {
        p.setBrush(colours[quarter]);
        p.drawPie(circle, (90 - quarter * 90) * 16, -90 * 16);
    }
    p.setPen(QPen(Ink, s / 24));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(circle);
}

QRectF drawCalendarPage(QPainter &p, qreal s)
{
    const QRectF page(s * 0.12, s * 0.16, s * 0.76, s * 0.70);
    p.setPen(QPen(Ink, s / 24));
    p.setBrush(Qt::white);
    p.drawRoundedRect(page, s * 0.06, s * 0.06);
    const QRectF header(page.left(), page.top(), page.width(), page.height() * 0.26);
    QPainterPath top;
    top.addRoundedRect(header, s * 0.06, s * 0.06);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xd0, 0x40, 0x38));
    p.drawPath(top);
    // Two rings that hold the pages.
    p.setBrush(Ink);
    p.drawRoundedRect(QRectF(s * 0.30, s * 0.09, s * 0.07, s * 0.15), s * 0.03, s * 0.03);
    p.drawRoundedRect(QRectF(s * 0.63, s * 0.09, s * 0.07, s * 0.15), s * 0.03, s * 0.03);
    return QRectF(page.left(), header.bottom(), page.width(), page.bottom() - header.bottom());
}

void drawWeek(QPainter &p, qreal s)
{
    const QRectF body = drawCalendarPage(p, s);
    const qreal cell = body.width() / 7.0;
    const qreal rowHeight = body.height() / 3.0;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 7; ++column) {
            const bool thisWeek = row == 1;
            p.setBrush(thisWeek ? QColor(0xf0, 0x90, 0x30) : QColor(0xc8, 0xbc, 0xa8));
            const qreal dot = cell * 0.55;
            p.drawEllipse(QPointF(body.left() + cell * (column + 0.5), body.top() + rowHeight * (row + 0.5)),
                          dot / 2, dot / 2);
        }
    }
}

void drawDay(QPainter &p, qreal s)
{
    const QRectF body = drawCalendarPage(p, s);
    const QPointF centre = body.center();
    const qreal r = body.height() * 0.22;
    p.setPen(QPen(QColor(0xf0, 0x90, 0x30), s / 22, Qt::SolidLine, Qt::RoundCap));
    for (int ray = 0; ray < 8; ++ray) {
        const qreal a = ray * M_PI / 4;
        p.drawLine(centre + QPointF(std::cos(a), std::sin(a)) * r * 1.35,
                   centre + QPointF(std::cos(a), std::sin(a)) * r * 1.8);
    }
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xf7, 0xb7, 0x32));
    p.drawEllipse(centre, r, r);
}

void drawScreen(QPainter &p, qreal s)
{
    const QRectF screen(s * 0.10, s * 0.14, s * 0.80, s * 0.54);
    p.setPen(QPen(Ink, s / 24));
    p.setBrush(QColor(0x3a, 0x6e, 0xa5));
    p.drawRoundedRect(screen, s * 0.05, s * 0.05);
    // A hill and the sky on the screen: a desktop picture.
    QPainterPath hill(QPointF(screen.left() + s * 0.03, screen.bottom() - s * 0.03));
    hill.quadTo(QPointF(screen.center().x(), screen.top() + s * 0.18),
                QPointF(screen.right() - s * 0.03, screen.bottom() - s * 0.03));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x7c, 0xc0, 0x6a));
    p.drawPath(hill);
    p.setPen(QPen(Ink, s / 24));
    p.setBrush(QColor(0xc8, 0xbc, 0xa8));
    p.drawRect(QRectF(s * 0.44, screen.bottom(), s * 0.12, s * 0.12));
    p.drawRoundedRect(QRectF(s * 0.28, s * 0.80, s * 0.44, s * 0.07), s * 0.03, s * 0.03);
}

} // namespace

QPixmap ChoiceIcon::draw(int index, int side)
{
    if (index < 106 || index > 110 || side <= 0)
        return QPixmap();
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = side;
    switch (index) {
    case 106:
        drawDie(p, s);
        break;
    case 107:
        drawSeasons(p, s);
        break;
    case 108:
        drawWeek(p, s);
        break;
    case 109:
        drawDay(p, s);
        break;
    case 110:
        drawScreen(p, s);
        break;
    }
    return picture;
}
