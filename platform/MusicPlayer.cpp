#include "platform/MusicPlayer.h"
#include "platform/BackgroundProcess.h"

#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"
#include "platform/touch/TouchPanel.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QtEndian>

namespace {

// FluidSynth's own gain; the tune is composed softly, so it needs no less.
const char *const RenderGain = "1.0";
// Background music stays well under the voice and the clicks.
constexpr float MusicVolume = 0.5f;
// Rendering runs far faster than playing; a render that takes this long is
// stuck on a damaged file that claims hours of music.
constexpr int RenderTimeLimitMs = 120 * 1000;
// Anything shorter than this is a header without music.
constexpr qint64 SmallestTune = 4096;

QString defaultSoundFont()
{
    const QStringList candidates = {
        QStringLiteral("/usr/share/sounds/sf2/FluidR3_GM.sf2"),
        QStringLiteral("/usr/share/sounds/sf2/default-GM.sf2"),
        QStringLiteral("/usr/share/soundfonts/default.sf2"),
    };
    for (const QString &path : candidates) {
        if (QFileInfo(path).isFile())
            return path;
    }
    return candidates.first();
}

bool looksLikeMidi(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "MThd";
}

// A damaged file can render to a few seconds of nothing, which is no tune.
// The synthesizer writes 16-bit samples after a plain 44-byte header.
bool holdsSound(const QString &wavePath)
{
    constexpr int Audible = 64; // out of 32767
    QFile file(wavePath);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(44))
        return false;
    while (!file.atEnd()) {
        const QByteArray block = file.read(1 << 16);
        const auto *samples = reinterpret_cast<const qint16 *>(block.constData());
        for (qsizetype i = 0; i < block.size() / 2; ++i) {
            if (qAbs(int(qFromLittleEndian(samples[i]))) > Audible)
                return true;
        }
    }
    return false;
}

} // namespace

MusicPlayer::MusicPlayer(QObject *parent)
    : QObject(parent)
    , m_program(QStringLiteral("fluidsynth"))
    , m_soundFont(defaultSoundFont())
{
}

MusicPlayer::~MusicPlayer()
{
    cancelRendering();
}

QString MusicPlayer::cacheFolder()
{
    return XdgPaths::cacheHome() + QStringLiteral("/lantern/music");
}

QString MusicPlayer::cachedWavePath(const QString &midiPath)
{
    const QFileInfo info(midiPath);
    const QString key = info.absoluteFilePath() + QLatin1Char('\n') + QString::number(info.size())
        + QLatin1Char('\n') + QString::number(info.lastModified().toMSecsSinceEpoch());
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex();
    return cacheFolder() + QLatin1Char('/') + QString::fromLatin1(hash) + QStringLiteral(".wav");
}

void MusicPlayer::setSynthesizer(const QString &program, const QString &soundFont)
{
    m_program = program;
    m_soundFont = soundFont;
}

QString MusicPlayer::synthesizer() const { return m_program; }
QString MusicPlayer::soundFont() const { return m_soundFont; }
bool MusicPlayer::isPlaying() const { return m_playing; }
bool MusicPlayer::isRendering() const { return m_render != nullptr; }
QString MusicPlayer::midiFile() const { return m_midiFile; }

QUrl MusicPlayer::source() const
{
    return m_player ? m_player->source() : QUrl();
}

int MusicPlayer::loops() const
{
    return m_player ? m_player->loops() : 0;
}

void MusicPlayer::follow(TouchPanel *panel)
{
    connect(panel, &TouchPanel::musicStarted, this, &MusicPlayer::play);
    connect(panel, &TouchPanel::musicStopped, this, &MusicPlayer::stop);
    if (panel->isSoundPlaying() && !panel->musicFile().isEmpty())
        play(panel->musicFile());
}

void MusicPlayer::play(const QString &midiPath)
{
    // Asking again for the tune already on its way changes nothing.
    if (!m_midiFile.isEmpty() && midiPath == m_midiFile && (m_playing || m_render))
        return;
    stop();
    m_midiFile = midiPath;

    if (!QFileInfo(midiPath).isFile()) {
        fail(QStringLiteral("no music file %1").arg(midiPath));
        return;
    }
    const QString wavePath = cachedWavePath(midiPath);
    if (QFileInfo(wavePath).size() >= SmallestTune) {
        startPlayback(wavePath);
        return;
    }
    if (!looksLikeMidi(midiPath)) {
        fail(QStringLiteral("%1 is not a MIDI file").arg(midiPath));
        return;
    }
    if (QStandardPaths::findExecutable(m_program).isEmpty()) {
        fail(QStringLiteral("the synthesizer %1 is not installed").arg(m_program));
        return;
    }
    if (!QFileInfo(m_soundFont).isFile()) {
        fail(QStringLiteral("no soundfont %1").arg(m_soundFont));
        return;
    }
    startRendering(midiPath, wavePath);
}

void MusicPlayer::stop()
{
    const bool wasPlaying = m_playing;
    cancelRendering();
    if (m_player)
        m_player->stop();
    m_playing = false;
    m_midiFile.clear();
    if (wasPlaying)
        emit stopped();
}

void MusicPlayer::startRendering(const QString &midiPath, const QString &wavePath)
{
    if (!QDir().mkpath(cacheFolder())) {
        fail(QStringLiteral("cannot create %1").arg(cacheFolder()));
        return;
    }
    // The synthesizer writes beside the final file and the result is moved
    // into place only when complete, so the cache never holds half a tune.
    m_wavePath = wavePath;
    m_partialPath = wavePath.chopped(4) + QStringLiteral(".partial.wav");
    QFile::remove(m_partialPath);

    m_render = new QProcess(this);
    m_render->setProcessChannelMode(QProcess::MergedChannels);
    connect(m_render, &QProcess::finished, this, &MusicPlayer::renderingEnded);
    connect(m_render, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            const QString reason = QStringLiteral("cannot start %1: %2").arg(m_program, m_render->errorString());
            cancelRendering();
            fail(reason);
        }
    });

    m_renderLimit = new QTimer(this);
    m_renderLimit->setSingleShot(true);
    connect(m_renderLimit, &QTimer::timeout, this, [this] {
        const QString tune = m_midiFile;
        cancelRendering();
        fail(QStringLiteral("rendering %1 took too long").arg(tune));
    });
    m_renderLimit->start(RenderTimeLimitMs);

    BackgroundProcess::lowerPriority(m_render);
    emit renderStarted(midiPath);
    m_render->start(m_program, {QStringLiteral("-n"), QStringLiteral("-i"), QStringLiteral("-q"), QStringLiteral("-g"), QString::fromLatin1(RenderGain), QStringLiteral("-F"), m_partialPath, m_soundFont, QFileInfo(midiPath).absoluteFilePath()});
}

void MusicPlayer::renderingEnded()
{
    const bool ok = m_render->exitStatus() == QProcess::NormalExit && m_render->exitCode() == 0;
    const QString output = QString::fromLocal8Bit(m_render->readAll()).trimmed();
    const QString partial = m_partialPath;
    const QString wavePath = m_wavePath;
    m_render->deleteLater();
    m_render = nullptr;
    delete m_renderLimit;
    m_renderLimit = nullptr;
    m_partialPath.clear();

    if (!ok || QFileInfo(partial).size() < SmallestTune || !holdsSound(partial)) {
        QFile::remove(partial);
        fail(QStringLiteral("%1 could not render %2: %3").arg(m_program, m_midiFile, output));
        return;
    }
    QFile::remove(wavePath);
    if (!QFile::rename(partial, wavePath)) {
        QFile::remove(partial);
        fail(QStringLiteral("cannot keep the rendered tune in %1").arg(wavePath));
        return;
    }
    emit renderFinished(wavePath);
    startPlayback(wavePath);
}

void MusicPlayer::cancelRendering()
{
    delete m_renderLimit;
    m_renderLimit = nullptr;
    if (!m_render)
        return;
    QProcess *render = m_render;
    m_render = nullptr;
    render->disconnect(this);
    if (render->state() != QProcess::NotRunning) {
        render->kill();
        render->waitForFinished(2000);
    }
    render->deleteLater();
    QFile::remove(m_partialPath);
    m_partialPath.clear();
}

void MusicPlayer::startPlayback(const QString &wavePath)
{
    // Without a device GStreamer would play into nothing and call it music.
    if (QMediaDevices::defaultAudioOutput().isNull()) {
        fail(QStringLiteral("no audio output for %1").arg(m_midiFile));
        return;
    }
    if (!m_player) {
        m_player = new QMediaPlayer(this);
        m_output = new QAudioOutput(this);
        m_output->setVolume(MusicVolume);
        m_player->setAudioOutput(m_output);
        connect(m_player, &QMediaPlayer::errorOccurred, this, &MusicPlayer::playerFailed);
    }
    m_wavePath = wavePath;
    m_output->setDevice(QMediaDevices::defaultAudioOutput());
    m_player->setLoops(QMediaPlayer::Infinite);
    m_player->setSource(QUrl::fromLocalFile(wavePath));
    m_player->play();
    m_playing = true;
    emit started();
}

void MusicPlayer::playerFailed(QMediaPlayer::Error error, const QString &text)
{
    if (error == QMediaPlayer::NoError)
        return;
    // A player that failed may still report on its old pipeline; the next
    // tune gets a fresh one.
    m_player->disconnect(this);
    m_player->stop();
    m_player->deleteLater();
    m_player = nullptr;
    m_output->deleteLater();
    m_output = nullptr;
    if (m_midiFile.isEmpty())
        return;
    // The cached file may be damaged: render it afresh next time, which
    // costs a moment, rather than fail on it for ever.
    QFile::remove(m_wavePath);
    fail(QStringLiteral("cannot play %1: %2").arg(m_midiFile, text));
}

void MusicPlayer::fail(const QString &reason)
{
    RuntimeLog::note("MusicPlayer", reason);
    const bool wasPlaying = m_playing;
    if (m_player)
        m_player->stop();
    m_playing = false;
    m_midiFile.clear();
    emit failed(reason);
    if (wasPlaying)
        emit stopped();
}
