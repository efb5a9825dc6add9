#pragma once

#include <QStyledItemDelegate>

// Draws each cell of the welcome box's grids as a card: a rounded frame with
// room around the text, warm under the pointer, filled when chosen.
class CardDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // Space between a card's frame and the cell's edge, and between the
    // frame and the text.
    static constexpr int Margin = 4;
    static constexpr int Padding = 6;
    static constexpr int FrameWidth = 2;
};
