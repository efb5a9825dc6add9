// How long the voice takes: from a spoken command to the moment the first
// audio sample is ready to play, for a short sentence.

#include "app/Assistant.h"
#include "app/Globals.h"
#include "platform/agent/AgentCharacter.h"
#include "platform/agent/SpeechSynthesizer.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace {

const QString ShortSentence = QStringLiteral("こんにちは。");
// Five runs of script, so five pieces between pauses for the voice.
const QString MixedSentence = QStringLiteral("こんにちは。今日もよろしくお願いします。");

// Waits for a signal with the event loop running, as the program does.
template<typename Sender, typename Signal>
bool waitFor(Sender *sender, Signal signal, int timeoutMs = 20000)
{
    QEventLoop loop;
    bool arrived = false;
    QObject::connect(sender, signal, &loop, [&] { arrived = true; loop.quit(); });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    return arrived;
}

void BM_SynthesizeShortSentence(benchmark::State &state)
{
    for (auto _ : state) {
        SpeechSynthesizer speech;
        speech.start(ShortSentence);
        if (!waitFor(&speech, &SpeechSynthesizer::finished) || !speech.hasAudio()) {
            state.SkipWithError("no voice");
            break;
        }
    }
}
BENCHMARK(BM_SynthesizeShortSentence)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

// The whole way: the assistant routine is told a sentence, rewrites it for
// the Japanese voice, queues it on the character, and the voice writes the clip.
void commandToFirstSample(benchmark::State &state, const QString &sentence)
{
    QTemporaryDir windows;
    QDir().mkpath(windows.filePath(QStringLiteral("MSAGENT/CHARS")));
    // The program folder stands beside the benchmarks' folder in the build.
    QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/CHARS/LANTERN.ACS"),
                windows.filePath(QStringLiteral("MSAGENT/CHARS/LANTERN.ACS")));
    Globals::WinDir = windows.path();
    QString on = QStringLiteral("On");
    Assistant::Character(on);
    AgentCharacter *character = Assistant::character();
    if (!character) {
        state.SkipWithError("no character (build the characters first)");
        return;
    }
    for (auto _ : state) {
        QString command = sentence;
        Assistant::Character(command);
        if (!waitFor(character, &AgentCharacter::speechAudioReady)) {
            state.SkipWithError("no voice");
            break;
        }
        state.PauseTiming();
        character->StopAll();
        state.ResumeTiming();
    }
    QString off = QStringLiteral("Off");
    Assistant::Character(off);
    Assistant::release();
}
BENCHMARK_CAPTURE(commandToFirstSample, short_sentence, ShortSentence)
    // clang-format off
    ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
BENCHMARK_CAPTURE(commandToFirstSample, mixed_scripts, MixedSentence)
    ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
// clang-format on

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
