#pragma once

#include "platform/agent/AgentRequest.h"
#include "platform/agent/AnimationPlayer.h"
#include "platform/agent/CharacterFile.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <memory>

class ClipPlayer;
class CharacterWindow;
class QVariantAnimation;
class SpeechBalloon;
class SpeechSynthesizer;

// One loaded character, with the members of the character object that the
// program uses under their published names. Show, Hide, Play, Speak, MoveTo
// and GestureAt are queued and carried out one after another; Stop and
// StopAll empty the queue. A method that cannot work (an animation the
// character lacks, a voice that is not installed) fails with a VbError at
// once, before anything is queued.
class AgentCharacter : public QObject
{
    Q_OBJECT

public:
    AgentCharacter(const QString &id, const CharacterFile &file, QObject *parent = nullptr);
    ~AgentCharacter() override;

    QString id() const { return m_id; }
    const CharacterFile &file() const { return m_file; }

    int LanguageID() const { return m_languageId; }
    void setLanguageID(int languageId);
    QString TTSModeID() const { return m_ttsModeId; }
    // Fails, keeping the earlier voice, when the voice is not installed.
    void setTTSModeID(const QString &modeId);

    // Makes sure the named states or animations (comma-separated) can be
    // played; fails for a name the character does not have.
    void Get(const QString &kind, const QString &names);
    void Show();
    void Hide();
    void Play(const QString &animation);
    // Reads the text aloud with the character's voice and shows it in the
    // balloon; "\Pau=N\" pauses for N milliseconds.
    void Speak(const QString &text);
    void Stop();
    void StopAll();
    // Moves the character's top left corner to a point of the screen, walking
    // there in about `speed` milliseconds (0: at once).
    void MoveTo(int x, int y, int speed = 1000);
    // Points towards a point of the screen.
    void GestureAt(int x, int y);
    // Brings the character above other windows, without taking the focus.
    void Activate();

    bool Visible() const;
    int Left() const { return m_position.x(); }
    int Top() const { return m_position.y(); }
    int Width() const { return m_file.size.width(); }
    int Height() const { return m_file.size.height(); }

    // Every call made on the character, in order ("Get State Showing",
    // "Show", "Play Greet", "Speak ..."), for whoever wants to follow it.
    QStringList requestLog() const { return m_log; }
    void clearRequestLog() { m_log.clear(); }
    // The request being carried out and those waiting behind it.
    QStringList pendingRequests() const;
    bool isBusy() const { return m_current || !m_queue.empty(); }

    CharacterWindow *window() const { return m_window; }
    SpeechBalloon *balloon() const { return m_balloon; }

signals:
    void requestStarted(const QString &request);
    void requestCompleted(const QString &request);
    // The voice has finished reading a Speak request's text into a file.
    void speechAudioReady(const QString &wavPath, qint64 durationMs);
    // An animation begins on the screen ("Show", "MoveLeft", "Idle"...).
    void animationStarted(const QString &name);
    void queueEmptied();

private:
    void enqueue(AgentRequest request);
    void startNext();
    void complete();
    void abortAll();
    void discard(SpeechSynthesizer *speech);

    void placeOnStage();
    void beginShow();
    void beginHide();
    void beginPlay();
    void beginSpeak();
    void speakNow();
    void moveMouth();
    void beginMove();
    void beginGesture();

    QString stateAnimation(const QString &state, const QString &preferred) const;
    void playAnimation(const QString &name, bool loop);
    void showRestFrame();
    void showImage(int image);
    void playIdleAnimation();
    void note(const QString &call) { m_log.append(call); }
    static QString direction(QPoint from, QPoint to);

    QString m_id;
    CharacterFile m_file;
    int m_languageId = 0x0411;
    QString m_ttsModeId;
    QPoint m_position;

    CharacterWindow *m_window = nullptr;
    SpeechBalloon *m_balloon = nullptr;
    AnimationPlayer *m_player = nullptr;
    ClipPlayer *m_audio = nullptr;
    QVariantAnimation *m_walk = nullptr;

    std::deque<AgentRequest> m_queue;
    std::unique_ptr<AgentRequest> m_current;
    QTimer m_startTimer;
    QTimer m_speechTimer;
    QTimer m_balloonTimer;
    QTimer m_idleTimer;
    // The mouth moves while the voice is heard and rests in its pauses.
    QTimer m_mouthTimer;
    QElapsedTimer m_speechClock;
    QList<QPair<qint64, qint64>> m_voiced;
    bool m_mouthMoving = false;
    bool m_idleAnimating = false;
    // Shown by request; it may still be off the screen while its stage has no room.
    bool m_wantsShown = false;
    QStringList m_log;
};
