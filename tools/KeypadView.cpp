#include "tools/KeypadView.h"
#include "tools/KeyTable.h"
#include "tools/KeypadAccessible.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

KeypadView::KeypadView(qint32 pad, int columns, int rows, const KeyTable *table, QWidget *parent)
    : QWidget(parent)
    , m_pad(pad)
    , m_columns(columns)
    , m_rows(rows)
    , m_table(table)
{
    KeypadAccessible::installFactory();
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(sizeHint());
}

KeypadView::~KeypadView()
{
    resetKeyInterfaces();
}

QList<QPoint> KeypadView::keyCells() const
{
    QList<QPoint> cells;
    for (int row = 1; row <= m_rows; ++row)
        for (int column = 1; column <= m_columns; ++column)
            if (m_table->find(m_pad, column, row))
                cells.append(QPoint(column, row));
    return cells;
}

QString KeypadView::legendAt(int column, int row) const
{
    const KeyTable::Record *key = m_table->find(m_pad, column, row);
    return key ? KeyTable::legend(key->text) : QString();
}

QRect KeypadView::cellRect(int column, int row) const
{
    return QRectF(((column - 1) * KeySize + Margin) * m_scale, ((row - 1) * KeySize + Margin) * m_scale,
                  KeySize * m_scale, KeySize * m_scale)
        .toRect();
}

void KeypadView::pressKey(int column, int row)
{
    const int x = (column - 1) * KeySize + Margin + KeySize / 2;
    const int y = (row - 1) * KeySize + Margin + KeySize / 2;
    emit mouseDown(x, y);
    emit mouseUp(x, y);
}

QAccessibleInterface *KeypadView::keyInterface(int column, int row) const
{
    const int cell = (row - 1) * m_columns + (column - 1);
    if (const QAccessible::Id id = m_keyInterfaces.value(cell))
        return QAccessible::accessibleInterface(id);
    auto *key = new KeypadKeyAccessible(const_cast<KeypadView *>(this), column, row);
    m_keyInterfaces.insert(cell, QAccessible::registerAccessibleInterface(key));
    return key;
}

void KeypadView::resetKeyInterfaces()
{
    for (const QAccessible::Id id : std::as_const(m_keyInterfaces))
        QAccessible::deleteAccessibleInterface(id);
    m_keyInterfaces.clear();
}

void KeypadView::setScale(double scale)
{
    m_scale = scale;
    setFixedSize(sizeHint());
    update();
}

void KeypadView::setHighlight(int column, int row)
{
    if (column == m_highlightColumn && row == m_highlightRow)
        return;
    m_highlightColumn = column;
    m_highlightRow = row;
    update();
}

QSize KeypadView::sizeHint() const
{
    return QSize(qRound((m_columns * KeySize + 2 * Margin) * m_scale),
                 qRound((m_rows * KeySize + 2 * Margin) * m_scale));
}

QPoint KeypadView::toPadUnits(const QPointF &position) const
{
    return QPoint(int(position.x() / m_scale), int(position.y() / m_scale));
}

void KeypadView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(m_scale, m_scale);
    QFont font = this->font();
    for (int row = 1; row <= m_rows; ++row) {
        for (int column = 1; column <= m_columns; ++column) {
            const KeyTable::Record *key = m_table->find(m_pad, column, row);
            if (!key)
                continue;
            const QRectF cell((column - 1) * KeySize + Margin + 1, (row - 1) * KeySize + Margin + 1,
                              KeySize - 2, KeySize - 2);
            const bool pressed = column == m_highlightColumn && row == m_highlightRow;
            QPainterPath outline;
            outline.addRoundedRect(cell, 4, 4);
            painter.fillPath(outline, pressed ? QColor(0x3a, 0x6e, 0xa5) : QColor(0xfb, 0xfb, 0xf4));
            painter.setPen(QPen(QColor(0x70, 0x70, 0x70), 0.8));
            painter.drawPath(outline);
            const QString legend = KeyTable::legend(key->text);
            font.setPixelSize(legend.size() > 1 ? 11 : 17);
            painter.setFont(font);
            painter.setPen(pressed ? Qt::white : Qt::black);
            painter.drawText(cell, Qt::AlignCenter, legend);
        }
    }
}

void KeypadView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint at = toPadUnits(event->position());
    emit mouseDown(at.x(), at.y());
}

void KeypadView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint at = toPadUnits(event->position());
    emit mouseUp(at.x(), at.y());
}
