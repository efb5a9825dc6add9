#include "tools/InkCanvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double InkWidth = 6;    // own units: thick enough to read at a glance
constexpr double MinimumStep = 1; // own units between kept points

} // namespace

InkCanvas::InkCanvas(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("手書きの枠"));
    setFixedSize(sizeHint());
}

void InkCanvas::setScale(double scale)
{
    m_scale = scale;
    setFixedSize(sizeHint());
    update();
}

QSize InkCanvas::sizeHint() const
{
    const int side = qRound(Side * m_scale);
    return QSize(side, side);
}

void InkCanvas::clear()
{
    m_strokes.clear();
    m_drawing = false;
    update();
}

void InkCanvas::removeLastStroke()
{
    if (m_strokes.isEmpty())
        return;
    m_strokes.removeLast();
    m_drawing = false;
    update();
}

QPointF InkCanvas::toOwnUnits(const QPointF &position) const
{
    // The mouse may leave the square while a stroke is drawn: the ink stays
    // on its edge.
    return QPointF(std::clamp(position.x() / m_scale, 0.0, double(Side)),
                   std::clamp(position.y() / m_scale, 0.0, double(Side)));
}

void InkCanvas::addPoint(const QPointF &position)
{
    HandwritingRecognizer::Stroke &stroke = m_strokes.last();
    const QPointF point = toOwnUnits(position);
    if (!stroke.isEmpty() && (point - stroke.last()).manhattanLength() < MinimumStep)
        return;
    const QPointF from = stroke.isEmpty() ? point : stroke.last();
    stroke.append(point);
    // Only the new piece of ink is drawn again.
    const double reach = InkWidth * m_scale;
    update(QRectF(from * m_scale, point * m_scale).normalized().adjusted(-reach, -reach, reach, reach).toAlignedRect());
}

void InkCanvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_strokes.append(HandwritingRecognizer::Stroke());
    m_drawing = true;
    addPoint(event->position());
}

void InkCanvas::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drawing && (event->buttons() & Qt::LeftButton))
        addPoint(event->position());
}

void InkCanvas::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_drawing)
        return;
    addPoint(event->position());
    m_drawing = false;
    emit strokeDrawn();
}

void InkCanvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().window());
    painter.scale(m_scale, m_scale);

    const QRectF square(1, 1, Side - 2, Side - 2);
    QPainterPath outline;
    outline.addRoundedRect(square, 4, 4);
    painter.fillPath(outline, QColor(0xfb, 0xfb, 0xf4));
    painter.setPen(QPen(QColor(0x70, 0x70, 0x70), 0.8));
    painter.drawPath(outline);

    // The faint cross helps to place a character's parts.
    painter.setPen(QPen(QColor(0xd8, 0xd8, 0xd0), 0.8, Qt::DashLine));
    painter.drawLine(QPointF(Side / 2.0, 6), QPointF(Side / 2.0, Side - 6));
    painter.drawLine(QPointF(6, Side / 2.0), QPointF(Side - 6, Side / 2.0));

    painter.setPen(QPen(Qt::black, InkWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const HandwritingRecognizer::Stroke &stroke : std::as_const(m_strokes)) {
        if (stroke.size() == 1)
            painter.drawPoint(stroke.first());
        else
            painter.drawPolyline(stroke.constData(), int(stroke.size()));
    }
}
