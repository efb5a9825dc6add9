#pragma once

#include "platform/agent/SpeechText.h"
#include "platform/agent/Voice.h"
#include "platform/agent/WaveAudio.h"

#include <QObject>
#include <QTemporaryDir>

class QProcess;

// Turns one spoken text with pause tags into one WAV file, without blocking
// the window: each piece between the tags is read by the voice in its own
// process (two at a time), its silent ends are cut, and the pieces are joined
// with the requested pauses between them. The file lives as long as the
// synthesizer.
class SpeechSynthesizer : public QObject
{
    Q_OBJECT

public:
    explicit SpeechSynthesizer(QObject *parent = nullptr);
    ~SpeechSynthesizer() override;

    // Starts reading the text with the voice installed now. finished() follows
    // in any case, also when there is no voice or every piece failed.
    void start(const QString &taggedText);
    void cancel();

    // A stretch of the clip in which the voice is heard, in milliseconds.
    struct Span
    {
        qint64 startMs = 0;
        qint64 endMs = 0;
    };

    bool isFinished() const { return m_finished; }
    bool hasAudio() const { return !m_audioPath.isEmpty(); }
    QString audioPath() const { return m_audioPath; }
    qint64 durationMs() const { return m_durationMs; }
    // Where the pieces of text lie in the clip; the pauses lie between them.
    QList<Span> voicedSpans() const { return m_voiced; }

signals:
    void finished();

private:
    void launchPieces();
    void pieceDone(int index, QProcess *process);
    void join();
    void finish();

    Voice::Engine m_engine = Voice::Engine::None;
    QList<SpeechText::Piece> m_pieces;
    QList<WaveAudio> m_clips;
    QList<QProcess *> m_processes;
    QTemporaryDir m_folder;
    int m_nextPiece = 0;
    int m_running = 0;
    bool m_finished = false;
    bool m_cancelled = false;
    QString m_audioPath;
    qint64 m_durationMs = 0;
    QList<Span> m_voiced;
};
