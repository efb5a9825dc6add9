#include "PreeditWatcher.h"

#include <QInputMethodEvent>

PreeditWatcher::PreeditWatcher(QObject *watched)
    : QObject(watched)
{
    watched->installEventFilter(this);
}

bool PreeditWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::InputMethod)
        m_preedit = static_cast<QInputMethodEvent *>(event)->preeditString();
    return QObject::eventFilter(watched, event);
}
