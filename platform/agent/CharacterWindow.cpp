#include "platform/agent/CharacterWindow.h"
#include "platform/DesktopCompositing.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

CharacterWindow::CharacterWindow(QSize size)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::Tool | Qt::WindowDoesNotAcceptFocus)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(size);
    setWindowTitle(QStringLiteral("Lantern character"));
}

void CharacterWindow::setFrame(const QImage &image)
{
    m_frame = image;
    if (!m_frame.isNull() && !DesktopCompositing::active()) {
        // Half-transparent glow would turn dark: keep the solid part only.
        const QImage scaled = m_frame.scaled(size());
        setMask(QBitmap::fromImage(scaled.createAlphaMask(Qt::ThresholdAlphaDither).convertToFormat(QImage::Format_Mono)));
    }
    update();
}

void CharacterWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!m_frame.isNull())
        painter.drawImage(rect(), m_frame);
}

void CharacterWindow::mousePressEvent(QMouseEvent *event)
{
    // Dragging moves the character out of the way of whatever it covers.
    if (event->button() == Qt::LeftButton && windowHandle())
        windowHandle()->startSystemMove();
}

void CharacterWindow::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    emit moved();
}
