#pragma once

#include <QMediaPlayer>
#include <QObject>
#include <QString>
#include <QUrl>

class QAudioOutput;
class QProcess;
class QTimer;
class TouchPanel;

// Plays a MIDI tune over and over while asked. The tune is turned into a WAV
// once by FluidSynth with a General MIDI soundfont, in the background so the
// window never waits, and kept in the per-user cache: the next time it starts
// at once. A missing synthesizer, soundfont, tune or audio output is noted in
// the runtime log and reported through failed(); the program then stays quiet.
class MusicPlayer : public QObject
{
    Q_OBJECT

public:
    explicit MusicPlayer(QObject *parent = nullptr);
    ~MusicPlayer() override;

    // The folder of rendered tunes, and the file that stands for one MIDI
    // file: a new size or modification time gives a new file.
    static QString cacheFolder();
    static QString cachedWavePath(const QString &midiPath);

    // The synthesizer and soundfont used to render; fluidsynth and the
    // General MIDI soundfont of the system unless told otherwise.
    void setSynthesizer(const QString &program, const QString &soundFont);
    QString synthesizer() const;
    QString soundFont() const;

    // True from started() until stopped(). A failure while playing reports
    // failed() and then stopped().
    bool isPlaying() const;
    // True while a tune is being rendered.
    bool isRendering() const;
    // The tune asked for by the last play(), empty after stop() or failed().
    QString midiFile() const;
    // What the media player was given, and how often it repeats it.
    QUrl source() const;
    int loops() const;

    // Plays the panel's tune whenever the panel asks for it and stops when
    // it no longer does. Whether it asks at all is the panel owner's choice.
    void follow(TouchPanel *panel);

public slots:
    void play(const QString &midiPath);
    void stop();

signals:
    void renderStarted(const QString &midiPath);
    void renderFinished(const QString &wavePath);
    void started();
    void stopped();
    void failed(const QString &reason);

private:
    void startRendering(const QString &midiPath, const QString &wavePath);
    void renderingEnded();
    void cancelRendering();
    void startPlayback(const QString &wavePath);
    void playerFailed(QMediaPlayer::Error error, const QString &text);
    void fail(const QString &reason);

    QString m_program;
    QString m_soundFont;
    QString m_midiFile;
    QString m_partialPath; // the WAV being written by the running render
    QString m_wavePath;
    QProcess *m_render = nullptr;
    QTimer *m_renderLimit = nullptr;
    QMediaPlayer *m_player = nullptr;
    QAudioOutput *m_output = nullptr;
    bool m_playing = false;
};
