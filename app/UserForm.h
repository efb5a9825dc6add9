#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>

// The few window-manager operations the program's borderless windows and boxes
// need: putting a window into a form or a control, drawing its frame active or
// inactive, letting the user move or resize it from an ordinary mouse press,
// switching its system menu, title bar and always-on-top state, and cutting it
// to a rounded rectangle.
//
// The window keeps a style word with the caption and system-menu bits, stored
// on the window itself so that every UserForm wrapping it reads the same word,
// and mirrored onto Qt's window flags. Writing false to MenuBox or TitleBar
// flips the bits (exclusive or) rather than clearing them: false on a window
// without the bits turns them on, and a title bar with only one of its two
// caption bits ends up with the other one.
class UserForm : public QObject
{
    Q_OBJECT

public:
    static constexpr quint32 WS_BORDER = 0x800000;
    static constexpr quint32 WS_DLGFRAME = 0x400000;
    static constexpr quint32 WS_CAPTION = WS_BORDER | WS_DLGFRAME;
    static constexpr quint32 WS_SYSMENU = 0x80000;
    static constexpr quint32 WS_EX_TOPMOST = 0x8;

    explicit UserForm(QObject *parent = nullptr);

    // The window every operation acts on; set before use.
    QWidget *Window() const;
    void SetWindow(QWidget *window);

    // The form or control most recently given as Parent or Container.
    QWidget *Host() const;

    // A form is a top-level widget; the host when it is one, otherwise none.
    QWidget *Parent() const;
    void SetParent(QWidget *form);
    // A control is a widget inside a form; the host when it is one.
    QWidget *Container() const;
    void SetContainer(QWidget *control);

    // Draws the window's frame as active or inactive: the window's
    // "frameActive" property, which painted frames follow.
    void Activate();
    void Deactivate();

    // Starts a drag-move of the window with the mouse button that is down, then
    // sends `control` a left button release so it does not stay pressed.
    void Move(QWidget *control);
    // The same for a drag-resize: edge 1 the right edge, 2 the bottom edge,
    // 3 the bottom-right corner; any other edge starts nothing but still
    // releases the mouse and still sends the release to `control`.
    void Size(QWidget *control, int edge);
    static Qt::Edges edgesForCode(int edge);

    bool MenuBox() const;
    void SetMenuBox(bool on);
    bool TitleBar() const;
    void SetTitleBar(bool on);
    bool Clip() const;
    void SetClip(bool on);

    // The style words themselves (GetWindowLong / SetWindowLong).
    quint32 Style() const;
    void SetStyle(quint32 style);
    quint32 ExStyle() const;
    void SetExStyle(quint32 exStyle);

    // Cuts the window to the rounded rectangle from (0, 0) to (width, height)
    // whose corners are ellipses `diameter` wide and high.
    void SetRound(qint32 width, qint32 height, qint32 diameter);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void attachTo(QWidget *host);
    void startDrag(Qt::Edges edges);
    void followPointer(Qt::Edges edges);
    void stopFollowing();
    static void sendButtonUp(QWidget *control);
    void applyFlags();

    QPointer<QWidget> m_window;
    QPointer<QWidget> m_host;

    // A drag the program carries out itself, where the window manager cannot.
    bool m_following = false;
    bool m_moving = false;
    Qt::Edges m_edges;
    QPoint m_pressGlobal;
    QPoint m_startPos;
    QSize m_startSize;
};
