#pragma once

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <functional>

// The workspace's clock tick. It looks at the local time every few seconds and
// runs its two checks once for each minute: a beep on the hour and the half
// hour while "Music" is on, and the spoken time at 00, 10, 15, 20, 30, 40, 45
// and 50 while "Graphic" is on.
class ChimeClock : public QObject
{
    Q_OBJECT

public:
    using TimeSource = std::function<QDateTime()>;

    explicit ChimeClock(QObject *parent = nullptr);

    void start();
    void stop();
    bool isActive() const { return m_timer.isActive(); }

    // Where the time comes from; the system clock unless replaced.
    void setTimeSource(TimeSource source);

    // One tick: runs the checks unless this minute was handled already.
    void tick();

signals:
    void beep();
    void tellTime();

private:
    QTimer m_timer;
    TimeSource m_now;
    QDateTime m_lastMinute;
};
