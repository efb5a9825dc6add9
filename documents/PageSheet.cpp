#include "documents/PageSheet.h"

#include <QPainter>

PageSheet::PageSheet(QWidget *parent)
    : QWidget(parent)
    , m_paper(new QWidget(this))
{
    m_paper->setObjectName(QStringLiteral("paper"));
    m_paper->setAutoFillBackground(true);
    QPalette palette = m_paper->palette();
    palette.setColor(QPalette::Window, Qt::white);
    m_paper->setPalette(palette);
    m_paper->move(Margin, Margin);
}

void PageSheet::setPaperSize(const QSize &size)
{
    m_paper->resize(size);
    resize(size + QSize(2 * Margin, 2 * Margin));
}

void PageSheet::paintEvent(QPaintEvent *)
{
    // A few widening, fading outlines make the shadow; it falls a little
    // down and to the right, as under a lamp.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF paper = QRectF(m_paper->geometry()).translated(3, 4);
    constexpr int steps = 10;
    for (int i = steps; i >= 1; --i) {
        painter.setBrush(QColor(0, 0, 0, 10));
        painter.drawRoundedRect(paper.adjusted(-i, -i, i, i), i, i);
    }
}
