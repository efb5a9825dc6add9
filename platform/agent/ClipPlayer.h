#pragma once

#include <QObject>

class QAudioOutput;
class QMediaPlayer;

// Plays one WAV file at a time through Qt Multimedia. The character's timing
// never depends on it: when there is no sound device, playing simply fails
// (noted once in the runtime log) and the balloon still shows for as long as
// the clip lasts.
class ClipPlayer : public QObject
{
    Q_OBJECT

public:
    explicit ClipPlayer(QObject *parent = nullptr);

    void play(const QString &path);
    void stop();

private:
    QMediaPlayer *m_player = nullptr;
    QAudioOutput *m_output = nullptr;
    bool m_failureNoted = false;
};
