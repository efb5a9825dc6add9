#include "platform/agent/SpeechSynthesizer.h"
#include "platform/BackgroundProcess.h"
#include "platform/RuntimeLog.h"

#include <QProcess>
#include <QTimer>

namespace {

constexpr int ParallelPieces = 2;
constexpr int PieceTimeoutMs = 20000;

} // namespace

SpeechSynthesizer::SpeechSynthesizer(QObject *parent)
    : QObject(parent)
    , m_folder(QDir::tempPath() + QStringLiteral("/lantern-speech-XXXXXX"))
{
}

SpeechSynthesizer::~SpeechSynthesizer()
{
    cancel();
}

void SpeechSynthesizer::start(const QString &taggedText)
{
    m_pieces = SpeechText::split(taggedText);
    m_clips = QList<WaveAudio>(m_pieces.size());
    m_engine = Voice::installedEngine();
    if (m_engine == Voice::Engine::None || !m_folder.isValid()) {
        QTimer::singleShot(0, this, &SpeechSynthesizer::finish);
        return;
    }
    launchPieces();
    if (m_running == 0)
        QTimer::singleShot(0, this, &SpeechSynthesizer::join);
}

void SpeechSynthesizer::cancel()
{
    m_cancelled = true;
    for (QProcess *process : std::as_const(m_processes)) {
        process->disconnect(this);
        process->kill();
        process->waitForFinished(1000);
        delete process;
    }
    m_processes.clear();
    m_running = 0;
}

void SpeechSynthesizer::launchPieces()
{
    while (m_running < ParallelPieces && m_nextPiece < m_pieces.size()) {
        const int index = m_nextPiece++;
        const SpeechText::Piece &piece = m_pieces.at(index);
        if (piece.text.isEmpty())
            continue;
        auto *process = new QProcess;
        m_processes.append(process);
        ++m_running;
        const QString output = m_folder.filePath(QStringLiteral("piece-%1.wav").arg(index));
        connect(process, &QProcess::finished, this, [this, index, process] { pieceDone(index, process); });
        connect(process, &QProcess::errorOccurred, this, [this, index, process](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                pieceDone(index, process);
        });
        QTimer::singleShot(PieceTimeoutMs, process, [process] { process->kill(); });
        // Its complaints ("No phoneme") add nothing to the note made below.
        process->setStandardOutputFile(QProcess::nullDevice());
        process->setStandardErrorFile(QProcess::nullDevice());
        BackgroundProcess::lowerPriority(process);
        process->start(Voice::program(m_engine), Voice::arguments(m_engine, output));
        process->write(Voice::reading(piece.text).toUtf8() + '\n');
        process->closeWriteChannel();
    }
}

void SpeechSynthesizer::pieceDone(int index, QProcess *process)
{
    if (m_cancelled || !m_processes.contains(process))
        return;
    m_processes.removeOne(process);
    process->deleteLater();
    --m_running;

    WaveAudio clip;
    const QString output = m_folder.filePath(QStringLiteral("piece-%1.wav").arg(index));
    if (process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0 && clip.load(output)) {
        clip.trimSilence();
        m_clips[index] = clip;
    } else {
        // A piece with nothing to pronounce ("「" alone) fails here; the rest is still spoken.
        RuntimeLog::note("SpeechSynthesizer", QStringLiteral("no audio for \"%1\"").arg(m_pieces.at(index).text));
    }
    QFile::remove(output);

    launchPieces();
    if (m_running == 0)
        join();
}

void SpeechSynthesizer::join()
{
    if (m_finished || m_cancelled)
        return;
    WaveAudio joined;
    for (const WaveAudio &clip : std::as_const(m_clips)) {
        if (!clip.isEmpty()) {
            joined = WaveAudio(clip.sampleRate(), clip.channels());
            break;
        }
    }
    QList<Span> voiced;
    for (int i = 0; i < m_pieces.size(); ++i) {
        const qint64 start = joined.durationMs();
        if (m_pieces.at(i).text.isEmpty())
            joined.appendSilence(m_pieces.at(i).pauseMs);
        else if (!m_clips.at(i).isEmpty() && joined.append(m_clips.at(i)))
            voiced.append({start, joined.durationMs()});
    }
    const bool anySpeech = !voiced.isEmpty();
    const QString path = m_folder.filePath(QStringLiteral("speech.wav"));
    if (anySpeech && joined.save(path)) {
        m_audioPath = path;
        m_durationMs = joined.durationMs();
        m_voiced = voiced;
    }
    m_clips.clear();
    finish();
}

void SpeechSynthesizer::finish()
{
    if (m_finished || m_cancelled)
        return;
    m_finished = true;
    emit finished();
}
