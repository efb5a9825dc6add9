#include "platform/agent/ClipPlayer.h"
#include "platform/RuntimeLog.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>

ClipPlayer::ClipPlayer(QObject *parent)
    : QObject(parent)
{
}

void ClipPlayer::play(const QString &path)
{
    if (!m_player) {
        m_player = new QMediaPlayer(this);
        m_output = new QAudioOutput(this);
        m_player->setAudioOutput(m_output);
        connect(m_player, &QMediaPlayer::errorOccurred, this, [this](QMediaPlayer::Error, const QString &message) {
            if (!m_failureNoted)
                RuntimeLog::note("ClipPlayer", message);
            m_failureNoted = true;
        });
    }
    m_player->stop();
    m_player->setSource(QUrl::fromLocalFile(path));
    m_player->play();
}

void ClipPlayer::stop()
{
    if (m_player) {
        m_player->stop();
        m_player->setSource(QUrl());
    }
}
