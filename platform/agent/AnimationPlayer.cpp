#include "platform/agent/AnimationPlayer.h"

AnimationPlayer::AnimationPlayer(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AnimationPlayer::showNext);
}

void AnimationPlayer::play(const QList<CharacterFrame> &frames, bool loop)
{
    m_timer.stop();
    m_frames = frames;
    m_loop = loop;
    m_next = 0;
    if (m_frames.isEmpty()) {
        QTimer::singleShot(0, this, &AnimationPlayer::finished);
        return;
    }
    showNext();
}

void AnimationPlayer::stop()
{
    m_timer.stop();
    m_frames.clear();
}

void AnimationPlayer::showNext()
{
    if (m_next >= m_frames.size()) {
        if (!m_loop) {
            m_frames.clear();
            emit finished();
            return;
        }
        m_next = 0;
    }
    const CharacterFrame frame = m_frames.at(m_next++);
    emit frameShown(frame.image);
    m_timer.start(frame.duration);
}
