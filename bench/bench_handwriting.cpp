// How long a stroke takes to be read: from the mouse release that ends the
// tenth stroke of 書 to its candidates painted on the screen.
#include "bench/PrivateHome.h"
#include "tools/HandwritingPad.h"
#include "tools/InkCanvas.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

namespace {

// 書 in stroke order, in a box of 100.
const QList<QList<QPointF>> Character = {
    // clang-format off
    {{15, 15}, {80, 15}}, {{20, 25}, {75, 25}, {75, 35}}, {{10, 35}, {90, 35}}, {{20, 45}, {80, 45}},
    {{48, 5}, {48, 55}}, {{28, 58}, {28, 92}}, {{28, 58}, {72, 58}, {72, 92}}, {{28, 70}, {72, 70}},
    {{28, 80}, {72, 80}}, {{28, 90}, {72, 90}},
};
// clang-format on

void send(InkCanvas *canvas, QEvent::Type type, const QPointF &at)
{
    const QPointF pixels = at * canvas->width() / 100.0;
    QMouseEvent event(type, pixels, canvas->mapToGlobal(pixels), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(canvas, &event);
}

// Pressed and dragged along the stroke, ten points a segment; not released.
void drag(InkCanvas *canvas, const QList<QPointF> &stroke)
{
    send(canvas, QEvent::MouseButtonPress, stroke.first());
    for (qsizetype i = 1; i < stroke.size(); ++i)
        for (int step = 1; step <= 10; ++step)
            send(canvas, QEvent::MouseMove, stroke[i - 1] + (stroke[i] - stroke[i - 1]) * step / 10.0);
}

void BM_StrokeToCandidates(benchmark::State &state)
{
    HandwritingPad page;
    page.setScale(1.58);
    page.show();
    if (!page.isAvailable() || !page.prepare()) {
        state.SkipWithError("the Japanese handwriting model is not installed");
        return;
    }
    InkCanvas *canvas = page.canvas();
    for (auto _ : state) {
        page.clear();
        for (qsizetype i = 0; i + 1 < Character.size(); ++i) {
            drag(canvas, Character[i]);
            send(canvas, QEvent::MouseButtonRelease, Character[i].last());
        }
        drag(canvas, Character.last());
        QCoreApplication::processEvents();

        QElapsedTimer clock;
        clock.start();
        send(canvas, QEvent::MouseButtonRelease, Character.last().last());
        // Painted and handed to the window system: on the screen.
        page.repaint();
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (page.candidates().size() < HandwritingPad::CandidateCount)
            state.SkipWithError("fewer than ten candidates");
    }
}
BENCHMARK(BM_StrokeToCandidates)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(40)->ReportAggregatesOnly(true);

} // namespace

int main(int argc, char **argv)
{
    PrivateHome home;
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
