#include "app/UserForm.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainterPath>
#include <QRegion>
#include <QWindow>

namespace {

const char *const StyleProperty = "windowStyle";
const char *const ExStyleProperty = "windowExStyle";

// What a window's flags say about the style bits, for a window that has no
// style word yet.
quint32 styleFromFlags(const QWidget *window)
{
    if (!window->isWindow())
        return 0;
    const Qt::WindowFlags flags = window->windowFlags();
    if (flags & Qt::FramelessWindowHint)
        return 0;
    if (!(flags & Qt::CustomizeWindowHint))
        return UserForm::WS_CAPTION | UserForm::WS_SYSMENU; // the usual decorated window
    quint32 style = 0;
    if (flags & Qt::WindowTitleHint)
        style |= UserForm::WS_CAPTION;
    if (flags & Qt::WindowSystemMenuHint)
        style |= UserForm::WS_SYSMENU;
    return style;
}

} // namespace

UserForm::UserForm(QObject *parent)
    : QObject(parent)
{
}

QWidget *UserForm::Window() const
{
    return m_window;
}

void UserForm::SetWindow(QWidget *window)
{
    stopFollowing();
    m_window = window;
}

QWidget *UserForm::Host() const
{
    return m_host;
}

QWidget *UserForm::Parent() const
{
    return m_host && m_host->isWindow() ? m_host.data() : nullptr;
}

void UserForm::SetParent(QWidget *form)
{
    m_host = form;
    attachTo(form);
}

QWidget *UserForm::Container() const
{
    return m_host && !m_host->isWindow() ? m_host.data() : nullptr;
}

void UserForm::SetContainer(QWidget *control)
{
    m_host = control;
    attachTo(control);
}

void UserForm::attachTo(QWidget *host)
{
    if (!m_window || !host || host == m_window)
        return;
    // Like SetParent: the window keeps its coordinates, now counted from its
    // new parent, and stays shown if it was.
    const bool shown = !m_window->isHidden();
    const QPoint topLeft = m_window->pos();
    m_window->setParent(host, m_window->windowFlags() & ~Qt::WindowType_Mask);
    m_window->move(topLeft);
    if (shown)
        m_window->show();
}

void UserForm::Activate()
{
    if (!m_window)
        return;
    m_window->setProperty("frameActive", true);
    m_window->update();
    if (m_window->isWindow())
        m_window->activateWindow();
}

void UserForm::Deactivate()
{
    if (!m_window)
        return;
    m_window->setProperty("frameActive", false);
    m_window->update();
}

// ----- drag-move and drag-resize --------------------------------------------

Qt::Edges UserForm::edgesForCode(int edge)
{
    switch (edge) {
    case 1:
        return Qt::RightEdge;
    case 2:
        return Qt::BottomEdge;
    case 3:
        return Qt::RightEdge | Qt::BottomEdge;
    default:
        return {};
    }
}

void UserForm::Move(QWidget *control)
{
    m_moving = true;
    startDrag({});
    sendButtonUp(control);
}

void UserForm::Size(QWidget *control, int edge)
{
    m_moving = false;
    startDrag(edgesForCode(edge));
    sendButtonUp(control);
}

void UserForm::startDrag(Qt::Edges edges)
{
    stopFollowing();
    if (QWidget *grabber = QWidget::mouseGrabber())
        grabber->releaseMouse();
    if (!m_window || (!m_moving && !edges))
        return;
    // A window is handed to the window manager, as if its frame was pressed.
    if (m_window->isWindow() && m_window->windowHandle()) {
        QWindow *handle = m_window->windowHandle();
        if (m_moving ? handle->startSystemMove() : handle->startSystemResize(edges))
            return;
    }
    // A box inside a form (or a window manager that cannot) is moved here.
    if (QGuiApplication::mouseButtons() & Qt::LeftButton)
        followPointer(edges);
}

void UserForm::followPointer(Qt::Edges edges)
{
    m_following = true;
    m_edges = edges;
    m_pressGlobal = QCursor::pos();
    m_startPos = m_window->pos(); // for a window, where its frame is: what move() takes
    m_startSize = m_window->size();
    QCoreApplication::instance()->installEventFilter(this);
}

void UserForm::stopFollowing()
{
    if (!m_following)
        return;
    m_following = false;
    QCoreApplication::instance()->removeEventFilter(this);
}

bool UserForm::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_following || !m_window)
        return QObject::eventFilter(watched, event);
    // The same mouse event passes here once for its window and once for its
    // widget; the widget's copy is enough.
    if (!watched->isWidgetType())
        return false;
    if (event->type() == QEvent::MouseMove) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (!(mouse->buttons() & Qt::LeftButton)) {
            stopFollowing(); // the button went up where we could not see it
            return false;
        }
        const QPoint delta = mouse->globalPosition().toPoint() - m_pressGlobal;
        if (m_moving) {
            m_window->move(m_startPos + delta);
        } else {
            const QSize least = m_window->minimumSize().expandedTo(QSize(1, 1));
            int width = m_startSize.width();
            int height = m_startSize.height();
            if (m_edges & Qt::RightEdge)
                width = qMax(least.width(), width + delta.x());
            if (m_edges & Qt::BottomEdge)
                height = qMax(least.height(), height + delta.y());
            m_window->resize(width, height);
        }
    } else if (event->type() == QEvent::MouseButtonRelease
               && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton
               && event->spontaneous()) {
        stopFollowing();
    }
    return false;
}

void UserForm::sendButtonUp(QWidget *control)
{
    if (!control)
        return;
    // A button-up with zero arguments: the left button, at the control's origin.
    QMouseEvent up(QEvent::MouseButtonRelease, QPointF(0, 0), control->mapToGlobal(QPointF(0, 0)), Qt::LeftButton,
                   Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(control, &up);
}

// ----- style switches -------------------------------------------------------

quint32 UserForm::Style() const
{
    if (!m_window)
        return 0;
    const QVariant kept = m_window->property(StyleProperty);
    return kept.isValid() ? kept.toUInt() : styleFromFlags(m_window);
}

void UserForm::SetStyle(quint32 style)
{
    if (!m_window)
        return;
    m_window->setProperty(StyleProperty, style);
    applyFlags();
}

quint32 UserForm::ExStyle() const
{
    if (!m_window)
        return 0;
    const QVariant kept = m_window->property(ExStyleProperty);
    if (kept.isValid())
        return kept.toUInt();
    return m_window->windowFlags() & Qt::WindowStaysOnTopHint ? WS_EX_TOPMOST : 0;
}

void UserForm::SetExStyle(quint32 exStyle)
{
    if (!m_window)
        return;
    m_window->setProperty(ExStyleProperty, exStyle);
    applyFlags();
}

bool UserForm::MenuBox() const
{
    return Style() & WS_SYSMENU;
}

void UserForm::SetMenuBox(bool on)
{
    SetStyle(on ? Style() | WS_SYSMENU : Style() ^ WS_SYSMENU);
}

bool UserForm::TitleBar() const
{
    return Style() & WS_CAPTION;
}

void UserForm::SetTitleBar(bool on)
{
    SetStyle(on ? Style() | WS_CAPTION : Style() ^ WS_CAPTION);
}

bool UserForm::Clip() const
{
    return ExStyle() & WS_EX_TOPMOST;
}

void UserForm::SetClip(bool on)
{
    SetExStyle(on ? ExStyle() | WS_EX_TOPMOST : ExStyle() & ~WS_EX_TOPMOST);
    if (on && m_window)
        m_window->raise();
}

void UserForm::applyFlags()
{
    // Only a top-level window has a frame for the flags to change.
    if (!m_window || !m_window->isWindow())
        return;
    const quint32 style = Style();
    Qt::WindowFlags flags = m_window->windowFlags();
    flags &= ~(Qt::FramelessWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint
               | Qt::WindowCloseButtonHint | Qt::WindowContextHelpButtonHint | Qt::WindowStaysOnTopHint);
    flags |= Qt::CustomizeWindowHint;
    if (style & WS_CAPTION)
        flags |= Qt::WindowTitleHint;
    else
        flags |= Qt::FramelessWindowHint;
    if (style & WS_SYSMENU)
        flags |= Qt::WindowSystemMenuHint;
    // Qt puts a title bar back on any window with frame buttons, so the
    // buttons come only with both a title and a menu.
    if ((style & WS_CAPTION) && (style & WS_SYSMENU))
        flags |= Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
    if (ExStyle() & WS_EX_TOPMOST)
        flags |= Qt::WindowStaysOnTopHint;
    if (flags == m_window->windowFlags())
        return;
    // Changing the flags hides a window; show it again as it was.
    const bool shown = m_window->isVisible();
    m_window->setWindowFlags(flags);
    if (shown)
        m_window->show();
}

// ----- shape ----------------------------------------------------------------

void UserForm::SetRound(qint32 width, qint32 height, qint32 diameter)
{
    if (!m_window)
        return;
    QPainterPath outline;
    const qreal radius = qMax(0, diameter) / 2.0;
    outline.addRoundedRect(QRectF(0, 0, qMax(0, width), qMax(0, height)), radius, radius);
    m_window->setMask(QRegion(outline.toFillPolygon().toPolygon()));
    m_window->update();
}
