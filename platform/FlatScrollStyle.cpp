#include "platform/FlatScrollStyle.h"

#include "platform/touch/TouchTheme.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleFactory>
#include <QStyleOptionSlider>

FlatScrollStyle::FlatScrollStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

FlatScrollStyle *FlatScrollStyle::instance()
{
    static QPointer<FlatScrollStyle> shared;
    if (!shared) {
        shared = new FlatScrollStyle;
        shared->setParent(QCoreApplication::instance());
    }
    return shared;
}

int FlatScrollStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return 28;
    case PM_ScrollBarSliderMin:
        return 44;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatScrollStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                               QStyleHintReturn *returnData) const
{
    // Bars that fade away are lost on people who do not know to look for them.
    if (hint == SH_ScrollBar_Transient)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

namespace {

void paintArrow(QPainter &painter, const QRectF &box, Qt::ArrowType direction, const QColor &colour)
{
    const qreal s = qMin(box.width(), box.height()) * 0.26;
    const QPointF c = box.center();
    QPolygonF triangle;
    switch (direction) {
    case Qt::UpArrow:
        triangle << QPointF(c.x() - s, c.y() + s * 0.55) << QPointF(c.x() + s, c.y() + s * 0.55) << QPointF(c.x(), c.y() - s * 0.65);
        break;
    case Qt::DownArrow:
        triangle << QPointF(c.x() - s, c.y() - s * 0.55) << QPointF(c.x() + s, c.y() - s * 0.55) << QPointF(c.x(), c.y() + s * 0.65);
        break;
    case Qt::LeftArrow:
        triangle << QPointF(c.x() + s * 0.55, c.y() - s) << QPointF(c.x() + s * 0.55, c.y() + s) << QPointF(c.x() - s * 0.65, c.y());
        break;
    default:
        triangle << QPointF(c.x() - s * 0.55, c.y() - s) << QPointF(c.x() - s * 0.55, c.y() + s) << QPointF(c.x() + s * 0.65, c.y());
        break;
    }
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(colour);
    painter.drawPolygon(triangle);
}

} // namespace

void FlatScrollStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                         const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool enabled = bar->state & State_Enabled;
    const bool horizontal = bar->orientation == Qt::Horizontal;

    painter->fillRect(bar->rect, QColor(0xF6, 0xEE, 0xE0));

    const QRect subLine = subControlRect(control, bar, SC_ScrollBarSubLine, widget);
    const QRect addLine = subControlRect(control, bar, SC_ScrollBarAddLine, widget);
    const QRect slider = subControlRect(control, bar, SC_ScrollBarSlider, widget);

    // Arrow buttons: flat, tinted only under the pointer or while pressed.
    const struct
    {
        QRect box;
        SubControl part;
        Qt::ArrowType arrow;
    } buttons[] = {
        {subLine, SC_ScrollBarSubLine, horizontal ? Qt::LeftArrow : Qt::UpArrow},
        {addLine, SC_ScrollBarAddLine, horizontal ? Qt::RightArrow : Qt::DownArrow},
    };
    for (const auto &button : buttons) {
        if (button.box.isEmpty())
            continue;
        const bool pressed = enabled && (bar->activeSubControls & button.part) && (bar->state & State_Sunken);
        const bool hovered = enabled && (bar->activeSubControls & button.part) && (bar->state & State_MouseOver);
        if (pressed || hovered) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(pressed ? TouchTheme::downTop() : TouchTheme::hoverBottom());
            painter->drawRoundedRect(QRectF(button.box).adjusted(2, 2, -2, -2), 6, 6);
        }
        paintArrow(*painter, button.box, button.arrow, enabled ? TouchTheme::ink() : TouchTheme::inkDisabled());
    }

    // The groove between the arrows, then the thumb.
    QRectF groove = QRectF(bar->rect);
    if (horizontal)
        groove = QRectF(subLine.right() + 1, bar->rect.top(), addLine.left() - subLine.right() - 1, bar->rect.height());
    else
        groove = QRectF(bar->rect.left(), subLine.bottom() + 1, bar->rect.width(), addLine.top() - subLine.bottom() - 1);
    groove = horizontal ? groove.adjusted(0, 7, 0, -7) : groove.adjusted(7, 0, -7, 0);
    painter->setPen(Qt::NoPen);
    painter->setBrush(enabled ? QColor(0xEA, 0xDC, 0xC6) : QColor(0xE8, 0xE4, 0xDE));
    painter->drawRoundedRect(groove, 5, 5);

    if (enabled && bar->maximum > bar->minimum && !slider.isEmpty()) {
        const bool grabbed = (bar->activeSubControls & SC_ScrollBarSlider) && (bar->state & State_Sunken);
        const bool hovered = (bar->activeSubControls & SC_ScrollBarSlider) && (bar->state & State_MouseOver);
        QRectF thumb = QRectF(slider).adjusted(horizontal ? 2 : 5, horizontal ? 5 : 2, horizontal ? -2 : -5, horizontal ? -5 : -2);
        painter->setBrush(grabbed ? TouchTheme::accentDark() : hovered ? TouchTheme::accent()
                                                                       : QColor(0xE3, 0x9A, 0x55));
        const qreal radius = (horizontal ? thumb.height() : thumb.width()) / 2.0;
        painter->drawRoundedRect(thumb, radius, radius);
    }
    painter->restore();
}
