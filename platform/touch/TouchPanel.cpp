#include "platform/touch/TouchPanel.h"

#include "platform/touch/TouchTheme.h"

#include <QApplication>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>

#include <algorithm>

namespace {

// Space on the right and at the bottom where the shadow falls.
constexpr int ShadowDepth = 8;
constexpr qreal Radius = 16.0;

} // namespace

TouchPanel::TouchPanel(QWidget *parent)
    : TouchPanel(QString(), parent)
{
}

TouchPanel::TouchPanel(const QString &caption, QWidget *parent)
    : QWidget(parent)
{
    setFont(TouchTheme::titleFont());
    setWindowTitle(caption);
    setAccessibleName(caption);
    updateMargins();
}

QString TouchPanel::dragTip()
{
    return QStringLiteral("ドラッグしながら移動できます");
}

QString TouchPanel::caption() const
{
    return windowTitle();
}

void TouchPanel::setCaption(const QString &caption)
{
    setWindowTitle(caption);
    setAccessibleName(caption);
    updateMargins();
    invalidateFrame();
}

QString TouchPanel::tip() const
{
    return m_tip;
}

void TouchPanel::setTip(const QString &tip)
{
    m_tip = tip;
    setAccessibleDescription(tip);
}

bool TouchPanel::isDraggable() const
{
    return m_draggable;
}

void TouchPanel::setDraggable(bool draggable)
{
    m_draggable = draggable;
    if (draggable && m_tip.isEmpty())
        setTip(dragTip());
    else if (!draggable && m_tip == dragTip())
        setTip(QString());
    if (draggable)
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor();
    invalidateFrame();
}

bool TouchPanel::isFrameActive() const
{
    return m_frameActive;
}

void TouchPanel::setFrameActive(bool active)
{
    m_frameActive = active;
    invalidateFrame();
}

bool TouchPanel::isSoundPlaying() const
{
    return m_soundPlaying;
}

void TouchPanel::setSoundPlaying(bool playing)
{
    if (playing == m_soundPlaying)
        return;
    m_soundPlaying = playing;
    emit soundPlayingChanged(playing);
    if (playing && !m_musicFile.isEmpty())
        emit musicStarted(m_musicFile);
    else if (!playing)
        emit musicStopped();
}

QString TouchPanel::musicFile() const
{
    return m_musicFile;
}

void TouchPanel::setMusicFile(const QString &path)
{
    m_musicFile = path;
}

int TouchPanel::index() const
{
    return m_index;
}

void TouchPanel::setIndex(int index)
{
    m_index = index;
}

void TouchPanel::play()
{
    setSoundPlaying(true);
}

void TouchPanel::stop()
{
    setSoundPlaying(false);
}

void TouchPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // A panel with a tune plays it while it is on screen.
    if (!m_musicFile.isEmpty())
        setSoundPlaying(true);
}

void TouchPanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!m_musicFile.isEmpty())
        setSoundPlaying(false);
}

// ----- geometry -------------------------------------------------------------

int TouchPanel::titleHeight() const
{
    if (caption().isEmpty())
        return 0;
    return QFontMetrics(font()).height() + 16;
}

QRectF TouchPanel::frameRect() const
{
    return QRectF(rect()).adjusted(1, 1, -ShadowDepth, -ShadowDepth);
}

void TouchPanel::updateMargins()
{
    setContentsMargins(14, titleHeight() + 12, 14 + ShadowDepth, 14 + ShadowDepth);
}

void TouchPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateMargins();
        invalidateFrame();
    }
}

QSize TouchPanel::sizeHint() const
{
    const QSize inner = QWidget::sizeHint();
    const int titleWidth = caption().isEmpty() ? 0 : QFontMetrics(font()).horizontalAdvance(caption()) + 48 + ShadowDepth;
    return QSize(std::max({inner.width(), titleWidth, 160}), qMax(inner.height(), titleHeight() + 80));
}

// ----- dragging -------------------------------------------------------------

QPoint TouchPanel::keptInsideParent(QPoint topLeft) const
{
    const QWidget *parent = parentWidget();
    if (!parent || isWindow())
        return topLeft;
    const int maxX = qMax(0, parent->width() - width());
    const int maxY = qMax(0, parent->height() - height());
    return QPoint(qBound(0, topLeft.x(), maxX), qBound(0, topLeft.y(), maxY));
}

void TouchPanel::mousePressEvent(QMouseEvent *event)
{
    if (!m_draggable || event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    raise();
    // A window lets the window manager do the moving where it can.
    if (isWindow() && windowHandle() && windowHandle()->startSystemMove())
        return;
    m_dragging = true;
    m_dragStarted = false;
    m_pressGlobal = event->globalPosition().toPoint();
    m_startPos = pos();
    setCursor(Qt::ClosedHandCursor);
}

void TouchPanel::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    event->accept();
    const QPoint travelled = event->globalPosition().toPoint() - m_pressGlobal;
    // An unsteady hand that only meant to click must not nudge the box.
    if (!m_dragStarted && travelled.manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragStarted = true;
    move(keptInsideParent(m_startPos + travelled));
}

void TouchPanel::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    event->accept();
    m_dragging = false;
    setCursor(Qt::OpenHandCursor);
    if (pos() != m_startPos)
        emit dragFinished(m_startPos, pos());
}

void TouchPanel::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    emit pointerEntered();
}

void TouchPanel::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    emit pointerLeft();
}

// ----- painting -------------------------------------------------------------

void TouchPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintFrame(painter);
}

void TouchPanel::invalidateFrame()
{
    update();
}

void TouchPanel::paintFrame(QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = frameRect();

    TouchTheme::paintShadow(painter, frame, Radius, ShadowDepth);

    QLinearGradient paper(frame.topLeft(), frame.bottomLeft());
    paper.setColorAt(0, TouchTheme::paper().lighter(102));
    paper.setColorAt(1, TouchTheme::paper().darker(103));
    painter.setPen(QPen(TouchTheme::border(), 1.5));
    painter.setBrush(paper);
    painter.drawRoundedRect(frame, Radius, Radius);

    const int strip = titleHeight();
    if (strip > 0) {
        // The title strip follows the top corners and ends square.
        QPainterPath top;
        top.addRoundedRect(frame, Radius, Radius);
        QPainterPath band;
        band.addRect(QRectF(frame.left(), frame.top(), frame.width(), strip));
        const QColor bar = TouchTheme::titleBar(m_frameActive);
        QLinearGradient shade(frame.topLeft(), QPointF(frame.left(), frame.top() + strip));
        shade.setColorAt(0, bar.lighter(112));
        shade.setColorAt(1, bar);
        painter.setPen(Qt::NoPen);
        painter.setBrush(shade);
        painter.drawPath(top.intersected(band));

        const QRect textBox = QRectF(frame.left() + 20, frame.top(), frame.width() - 40, strip).toRect();
        const int flags = Qt::AlignVCenter | Qt::AlignLeft;
        painter.setFont(TouchTheme::fittedFont(font(), caption(), textBox, flags));
        painter.setPen(TouchTheme::titleText(m_frameActive));
        painter.drawText(textBox, flags, caption());

        // A grip of three dots tells that the box can be taken and moved.
        if (m_draggable) {
            painter.setBrush(TouchTheme::titleText(m_frameActive));
            const qreal cy = frame.top() + strip / 2.0;
            for (int i = 0; i < 3; ++i)
                painter.drawEllipse(QPointF(frame.right() - 22 - i * 11, cy), 2.6, 2.6);
        }
    }
}
