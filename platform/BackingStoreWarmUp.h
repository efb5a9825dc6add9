#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>

#include <thread>

class QWidget;
class QWindow;

// A full-screen window's first picture is painted into a new buffer of
// several megabytes (shared with the X server), and the kernel hands out each
// page of it on first touch: on a virtual machine that costs more than all
// the painting. This sizes the window's buffer early and touches every page
// on a thread of its own while start-up goes on, so that the first paint
// finds them ready. The thread only reads, and it has ended before the
// window handles anything that could paint, resize or close it.
class BackingStoreWarmUp : public QObject
{
public:
    BackingStoreWarmUp() = default;
    ~BackingStoreWarmUp() override;

    // `window` is a top-level widget with its native window made; its buffer
    // is sized to `size`, the size it is about to be shown at.
    void start(QWidget *window, const QSize &size);
    // Waits for the thread, if there is one.
    void finish();
    bool isRunning() const { return m_thread.joinable(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QWindow> m_window;
    std::thread m_thread;
};
