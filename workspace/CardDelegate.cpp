#include "workspace/CardDelegate.h"

#include "platform/touch/TouchTheme.h"

#include <QPainter>

void CardDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool chosen = option.state & QStyle::State_Selected;
    const bool pointed = option.state & QStyle::State_MouseOver;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor fill = option.palette.color(QPalette::Base);
    QColor edge(0xE6, 0xD3, 0xAD);
    if (chosen) {
        fill = option.palette.color(QPalette::Highlight);
        edge = TouchTheme::accentDark();
    } else if (pointed) {
        fill = QColor(0xFF, 0xF1, 0xD6);
        edge = TouchTheme::accent();
    }
    const qreal inset = Margin + FrameWidth / 2.0;
    painter->setPen(QPen(edge, FrameWidth));
    painter->setBrush(fill);
    painter->drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), 10, 10);
    painter->restore();

    // The text inside the frame, drawn as usual but without the plain
    // selection and hover backgrounds: the card has shown both already.
    QStyleOptionViewItem inner = option;
    const int room = Margin + FrameWidth + Padding;
    inner.rect = option.rect.adjusted(room, room, -room, -room);
    inner.state &= ~(QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_HasFocus);
    if (chosen)
        inner.palette.setColor(QPalette::Text, option.palette.color(QPalette::HighlightedText));
    QStyledItemDelegate::paint(painter, inner, index);
}
