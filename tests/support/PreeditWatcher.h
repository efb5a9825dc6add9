#pragma once

#include <QInputMethodEvent>
#include <QObject>
#include <QString>

// Remembers the composition (preedit) the input method last showed in a widget.
class PreeditWatcher : public QObject
{
public:
    explicit PreeditWatcher(QObject *watched)
        : QObject(watched)
    {
        watched->installEventFilter(this);
    }
    QString preedit() const { return m_preedit; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::InputMethod)
            m_preedit = static_cast<QInputMethodEvent *>(event)->preeditString();
        return QObject::eventFilter(watched, event);
    }

private:
    QString m_preedit;
};
