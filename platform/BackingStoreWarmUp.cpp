#include "platform/BackingStoreWarmUp.h"

#include <QBackingStore>
#include <QEvent>
#include <QImage>
#include <QPaintDevice>
#include <QWidget>
#include <QWindow>

#include <unistd.h>

BackingStoreWarmUp::~BackingStoreWarmUp()
{
    finish();
}

void BackingStoreWarmUp::start(QWidget *window, const QSize &size)
{
    finish();
    QBackingStore *store = window ? window->backingStore() : nullptr;
    if (!store || !window->windowHandle() || size.isEmpty())
        return;
    // The size the first paint would give it: that paint then keeps this buffer.
    store->resize(size);
    QPaintDevice *device = store->paintDevice();
    if (!device || device->devType() != QInternal::Image)
        return;
    const auto *image = static_cast<const QImage *>(device);
    const uchar *bits = image->constBits();
    const qsizetype length = image->sizeInBytes();
    if (!bits || length <= 0)
        return;

    m_window = window->windowHandle();
    m_window->installEventFilter(this);
    // Reading is enough for memory shared with the X server (private memory
    // would only show the zero page), and it cannot spoil a picture.
    const qsizetype page = qMax<qsizetype>(4096, sysconf(_SC_PAGESIZE));
    m_thread = std::thread([bits, length, page] {
        unsigned sum = 0;
        for (qsizetype at = 0; at < length; at += page)
            sum += *static_cast<const volatile uchar *>(bits + at);
        Q_UNUSED(sum);
    });
}

void BackingStoreWarmUp::finish()
{
    if (m_thread.joinable())
        m_thread.join();
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = nullptr;
}

bool BackingStoreWarmUp::eventFilter(QObject *, QEvent *event)
{
    // Any of these may paint into the buffer or give it back.
    switch (event->type()) {
    case QEvent::Expose:
    case QEvent::UpdateRequest:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::Close:
    case QEvent::PlatformSurface:
        finish();
        break;
    default:
        break;
    }
    return false;
}
