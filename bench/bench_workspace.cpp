// The main window with 1,000 documents in the folder. Goals: from making the
// window to the welcome box showing with both lists filled, under 500 ms;
// opening a document from the recent list, under 150 ms.
#include "PrivateHome.h"
#include "app/Globals.h"
#include "documents/Database.h"
#include "tools/InfoDlg.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTableWidget>

#include <benchmark/benchmark.h>

namespace {

constexpr int DocumentCount = 1000;

void fillFolder()
{
    const QString body = "{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}\\f0\\fs48 "
        + QString(1500, u'x') + "\\par}";
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.page(1).item(1).Text = body;
    const QDateTime start(QDate(2025, 4, 1), QTime(9, 30, 15));
    for (int i = 0; i < DocumentCount; ++i) {
        record.DocumentTitle = QStringLiteral("旅行の計画 %1").arg(i);
        record.Timestamp = start.addSecs(i * 3607);
        Database::SaveDocument(Database::NewFileName(record.Timestamp), record, Database::Sequential);
    }
}

void quiet(QString &) {}

void StartUpToWelcomeBox(benchmark::State &state)
{
    for (auto _ : state) {
        auto *workspace = new Workspace;
        workspace->setInfoDlg(new InfoDlg(workspace));
        workspace->resize(1366, 768);
        workspace->show();
        workspace->Reload();
        workspace->ApplySetting();
        workspace->Start();
        // The lists are filled once the window's first picture is shown.
        const auto filled = [workspace] {
            return workspace->welcomeBox()->isVisible()
                && workspace->welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage)->columnCount() == DocumentCount;
        };
        QElapsedTimer waited;
        waited.start();
        while (!filled() && waited.elapsed() < 5000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        if (!filled()) {
            state.SkipWithError("the welcome box did not show every document");
            break;
        }
        state.PauseTiming();
        delete workspace;
        state.ResumeTiming();
    }
}
BENCHMARK(StartUpToWelcomeBox)->Unit(benchmark::kMillisecond)->Iterations(9);

void OpenFromRecentList(benchmark::State &state)
{
    Workspace workspace;
    workspace.setInfoDlg(new InfoDlg(&workspace));
    workspace.resize(1366, 768);
    workspace.show();
    workspace.Reload();
    workspace.ApplySetting();
    workspace.Start();
    QTableWidget *recent = workspace.welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage);
    QElapsedTimer waited;
    waited.start();
    while (recent->columnCount() < DocumentCount && waited.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    int column = 0;
    for (auto _ : state) {
        emit recent->cellClicked(0, column);
        QCoreApplication::processEvents();
        if (workspace.Document() != Workspace::DocumentView) {
            state.SkipWithError("the document did not open");
            break;
        }
        state.PauseTiming();
        // Back to the list without saving: the document is left as it was.
        workspace.welcomeBox()->show();
        column = (column + 7) % 50;
        state.ResumeTiming();
    }
}
BENCHMARK(OpenFromRecentList)->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char **argv)
{
    PrivateHome home;
    QApplication application(argc, argv);
    Globals::GraphicOn = false;
    Globals::MusicOn = false;
    Workspace::setCharacterRoutine(quiet);
    fillFolder();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
