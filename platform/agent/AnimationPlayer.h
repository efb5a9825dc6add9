#pragma once

#include "platform/agent/CharacterFile.h"

#include <QObject>
#include <QTimer>

// Steps through the frames of one animation, each for its own duration,
// once or over and over (the mouth while speaking, the walk while moving).
class AnimationPlayer : public QObject
{
    Q_OBJECT

public:
    explicit AnimationPlayer(QObject *parent = nullptr);

    void play(const QList<CharacterFrame> &frames, bool loop);
    void stop();
    bool isPlaying() const { return !m_frames.isEmpty(); }

signals:
    void frameShown(int image);
    // Only for an animation played once, after its last frame's time.
    void finished();

private:
    void showNext();

    QList<CharacterFrame> m_frames;
    bool m_loop = false;
    int m_next = 0;
    QTimer m_timer;
};
