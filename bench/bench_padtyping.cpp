// From the release of a pad key to the character shown in the text edit:
// with the input method off (the kana typed directly) and composing (romaji
// through IBus and Mozc, the kana shown in the composition). Each repetition
// is one key; the median is the figure to read. Run under the IBus session
// (bench/bench_padtyping.sh) for the composing case.
#include "app/Globals.h"
#include "platform/ime/InputMethodStatus.h"
#include "tools/IME.h"
#include "tools/InfoDlg.h"
#include "tools/KeypadView.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QMouseEvent>
#include <QTextEdit>
#include <benchmark/benchmark.h>

namespace {

InfoDlg *dialog = nullptr;
QTextEdit *edit = nullptr;
QString preedit;

class PreeditFilter : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::InputMethod)
            preedit = static_cast<QInputMethodEvent *>(event)->preeditString();
        return QObject::eventFilter(watched, event);
    }
};

void mouse(QWidget *widget, QEvent::Type type, QPoint at)
{
    QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// Clicks a hiragana key and returns the milliseconds from its release until
// the condition holds (and the edit has painted it); -1 when it never did.
template<typename Done>
double clickAndWait(QPoint cell, Done done)
{
    KeypadView *view = dialog->Keypads[KeyTable::Hiragana];
    const QPoint at(qRound(((cell.x() - 1) * 30 + 25) * dialog->padScale()),
                    qRound(((cell.y() - 1) * 30 + 25) * dialog->padScale()));
    mouse(view, QEvent::MouseButtonPress, at);
    QElapsedTimer clock;
    clock.start();
    mouse(view, QEvent::MouseButtonRelease, at);
    const QDeadlineTimer deadline(2000);
    while (!done() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    edit->viewport()->repaint();
    return done() ? clock.nsecsElapsed() / 1e6 : -1;
}

const QList<QPoint> Kana = {{5, 2}, {6, 5}, {10, 3}, {11, 5}, {2, 1}, {1, 2}};

void BM_KeyToTextDirect(benchmark::State &state)
{
    if (IME::IMEStatus() >= 4)
        IME().KeyPress(IME::KanjiKey, true);
    int n = 0;
    for (auto _ : state) {
        if (edit->document()->characterCount() > 200)
            edit->clear();
        const int before = edit->document()->characterCount();
        const double ms = clickAndWait(Kana[n++ % Kana.size()],
                                       [before] { return edit->document()->characterCount() > before; });
        if (ms < 0) {
            state.SkipWithError("the character never arrived");
            break;
        }
        state.SetIterationTime(ms / 1000);
    }
}

void BM_KeyToTextComposing(benchmark::State &state)
{
    if (qEnvironmentVariableIsEmpty("LANTERN_IM_SESSION")) {
        state.SkipWithError("needs an input-method session (bench/bench_padtyping.sh)");
        return;
    }
    if (IME::IMEStatus() < 4)
        IME().KeyPress(IME::KanjiKey, true);
    int n = 0;
    for (auto _ : state) {
        if (preedit.size() > 12) {
            state.PauseTiming();
            IME().KeyPress(IME::EscapeKey);
            IME().KeyPress(IME::EscapeKey);
            const QDeadlineTimer settle(1000);
            while (!preedit.isEmpty() && !settle.hasExpired())
                QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            state.ResumeTiming();
        }
        const QString before = preedit;
        const double ms = clickAndWait(Kana[n++ % Kana.size()],
                                       [before] { return preedit.size() > before.size(); });
        if (ms < 0) {
            state.SkipWithError("the composition never grew");
            break;
        }
        state.SetIterationTime(ms / 1000);
    }
}

} // namespace

BENCHMARK(BM_KeyToTextDirect)->UseManualTime()->Iterations(1)->Repetitions(60)->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_KeyToTextComposing)->UseManualTime()->Iterations(1)->Repetitions(60)->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    Globals::InstallPath = QStringLiteral(LANTERN_SOURCE_DIR) + QStringLiteral("/build/bin");
    if (qEnvironmentVariableIsSet("LANTERN_PROGRAM_DIR"))
        Globals::InstallPath = qEnvironmentVariable("LANTERN_PROGRAM_DIR");
    dialog = new InfoDlg;
    dialog->setPadScale(1.5);
    dialog->move(0, 320);
    dialog->Begin(InfoDlg::CharacterMode);
    edit = new QTextEdit;
    edit->installEventFilter(new PreeditFilter);
    edit->setGeometry(0, 0, 600, 260);
    edit->show();
    edit->activateWindow();
    edit->setFocus();
    const QDeadlineTimer ready(3000);
    const bool withIBus = qEnvironmentVariableIsSet("LANTERN_IM_SESSION");
    // Ready once the edit has the focus and, with IBus, Mozc has told its mode.
    while ((QApplication::focusWidget() != edit
            || (withIBus && InputMethodStatus::instance().modeSymbol().isEmpty()))
           && !ready.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    delete dialog;
    delete edit;
    return 0;
}
