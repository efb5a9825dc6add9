#include "platform/keys/KeySender.h"
#include "platform/keys/KeyNotation.h"
#include "platform/RuntimeLog.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QWindow>
#include <private/qguiapplication_p.h>
#include <qpa/qplatforminputcontext.h>
#include <qpa/qplatformintegration.h>
#include <qpa/qwindowsysteminterface.h>

namespace {

ulong timestamp()
{
    static QElapsedTimer clock;
    if (!clock.isValid())
        clock.start();
    return ulong(clock.elapsed());
}

void deliver(QWindow *window, QEvent::Type type, const KeyStroke &stroke)
{
    const ulong time = timestamp();
    if (QPlatformInputContext *context = QGuiApplicationPrivate::platformIntegration()->inputContext()) {
        QKeyEvent event(type, stroke.key, stroke.modifiers, stroke.keycode, stroke.keysym,
                        stroke.nativeModifiers(), stroke.text);
        event.setTimestamp(time);
        if (context->filterEvent(&event))
            return;
    }
    QWindowSystemInterface::handleExtendedKeyEvent(window, time, type, stroke.key, stroke.modifiers,
                                                   stroke.keycode, stroke.keysym,
                                                   stroke.nativeModifiers(), stroke.text);
}

} // namespace

bool KeySender::send(const KeyStroke &stroke)
{
    QWindow *window = QGuiApplication::focusWindow();
    if (!window) {
        RuntimeLog::note("KeySender", QStringLiteral("no window has the focus"));
        return false;
    }
    // The input method cannot compose a character that no key types: the
    // composition ends first, so that the character follows it. (Mozc commits
    // its composition on a reset, in order with the keys that follow.)
    if (stroke.keycode == 0)
        QGuiApplication::inputMethod()->reset();
    deliver(window, QEvent::KeyPress, stroke);
    deliver(window, QEvent::KeyRelease, stroke);
    return true;
}

int KeySender::send(const QString &keys)
{
    int sent = 0;
    for (const KeyStroke &stroke : KeyNotation::parse(keys)) {
        if (!send(stroke))
            break;
        ++sent;
    }
    return sent;
}
