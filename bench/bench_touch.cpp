// How long the touch controls take to make, measure and paint: the workspace
// creates some hundred of them at start-up and repaints them on every hover.
#include "platform/touch/TouchButton.h"
#include "platform/touch/TouchPanel.h"
#include "platform/touch/TouchTheme.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

const QString LongCaption = QStringLiteral("コンピュータの電源をつけると起動し 終了と同時に電源も切る");

void BM_CreateAndMeasureButton(benchmark::State &state)
{
    for (auto _ : state) {
        TouchButton button(QStringLiteral("文字入力"));
        button.setTip(QStringLiteral("クリックすると、[文字入力] ダイアログを開きます。"));
        button.setSoundFile(QStringLiteral("/nowhere/1.WAV"));
        benchmark::DoNotOptimize(button.sizeHint());
    }
}
BENCHMARK(BM_CreateAndMeasureButton);

void BM_PaintButton(benchmark::State &state)
{
    TouchButton button(QStringLiteral("設定"));
    button.resize(button.sizeHint());
    QImage canvas(button.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        button.render(&canvas);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PaintButton);

void BM_PaintSqueezedLongCaption(benchmark::State &state)
{
    // The worst case: a long caption in a box too small, so its type shrinks.
    TouchButton button(LongCaption);
    button.resize(120, 70);
    QImage canvas(button.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        button.render(&canvas);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PaintSqueezedLongCaption);

void BM_PaintPanel(benchmark::State &state)
{
    TouchPanel panel(QStringLiteral("スタート"));
    panel.setDraggable(true);
    panel.resize(480, 360);
    QImage canvas(panel.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        panel.render(&canvas);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PaintPanel);

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
