#include "workspace/ChimeClock.h"

#include "app/Globals.h"

ChimeClock::ChimeClock(QObject *parent)
    : QObject(parent)
    , m_now([] { return QDateTime::currentDateTime(); })
{
    m_timer.setObjectName(QStringLiteral("Clock"));
    // Often enough that a minute is never missed, the checks run once a minute.
    m_timer.setInterval(5000);
    connect(&m_timer, &QTimer::timeout, this, &ChimeClock::tick);
}

void ChimeClock::start()
{
    m_timer.start();
}

void ChimeClock::stop()
{
    m_timer.stop();
}

void ChimeClock::setTimeSource(TimeSource source)
{
    m_now = std::move(source);
}

void ChimeClock::tick()
{
    const QDateTime now = m_now();
    QDateTime minute(now.date(), QTime(now.time().hour(), now.time().minute()));
    if (minute == m_lastMinute)
        return;
    m_lastMinute = minute;

    const QString nn = now.toString(QStringLiteral("mm"));
    if (Globals::MusicOn && (nn == u"00" || nn == u"30"))
        emit beep();
    static const QStringList spoken = {"00", "10", "15", "20", "30", "40", "45", "50"};
    if (Globals::GraphicOn && spoken.contains(nn))
        emit tellTime();
}
