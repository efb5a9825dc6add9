#pragma once

#include <QObject>
#include <QString>

// Remembers the composition (preedit) the input method last showed in a widget.
class PreeditWatcher : public QObject
{
public:
    explicit PreeditWatcher(QObject *watched);
    QString preedit() const { return m_preedit; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString m_preedit;
};
