// Opening a large document: a 5 MB file written by the program itself
// (Japanese text with sizes, bold, centred headings and bullets). Goal: from
// the click in the recent list to the first page on the screen, under 1 s.
// The steps are measured apart as well, to see where the time goes.
#include "PrivateHome.h"
#include "app/Globals.h"
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/RichTextCodec.h"
#include "documents/WordProcessor.h"
#include "platform/rtf/RtfWriter.h"
#include "tools/InfoDlg.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTableWidget>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <benchmark/benchmark.h>

namespace {

constexpr qsizetype DocumentBytes = 5 * 1024 * 1024;

void addParagraphs(QTextCursor &cursor, int count, int &paragraph)
{
    const QString sentences[] = {
        QStringLiteral("今日は朝から良い天気で、庭の花がきれいに咲きました。"),
        QStringLiteral("孫が遊びに来るので、お昼はちらし寿司を作ります。"),
        QStringLiteral("来週は町内会の集まりがあり、手紙を書いて配る予定です。"),
    };
    QTextCharFormat normal;
    normal.setFontPointSize(12);
    QTextCharFormat heading = normal;
    heading.setFontPointSize(20);
    heading.setFontWeight(QFont::Bold);
    for (int i = 0; i < count; ++i, ++paragraph) {
        if (paragraph > 0)
            cursor.insertBlock();
        if (paragraph % 20 == 0) {
            QTextBlockFormat centred;
            centred.setAlignment(Qt::AlignHCenter);
            cursor.setBlockFormat(centred);
            cursor.insertText(QStringLiteral("第%1章").arg(paragraph / 20 + 1), heading);
            continue;
        }
        cursor.setBlockFormat(QTextBlockFormat());
        cursor.insertText(sentences[paragraph % 3], normal);
        cursor.insertText(QStringLiteral("大切"), heading);
        cursor.insertText(sentences[(paragraph + 1) % 3], normal);
        if (paragraph % 10 == 5)
            cursor.createList(QTextListFormat::ListDisc);
    }
}

// The rich text of a document of about the given size, as the program writes it.
QString richTextOfSize(qsizetype bytes)
{
    QTextDocument document;
    QTextCursor cursor(&document);
    int paragraph = 0;
    addParagraphs(cursor, 500, paragraph);
    const qsizetype sample = RtfWriter::write(&document).size();
    addParagraphs(cursor, int(500 * (double(bytes) / sample - 1)), paragraph);
    return RichTextCodec::write(&document);
}

QString largeDocumentPath()
{
    static const QString path = [] {
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.DocumentTitle = QStringLiteral("長い記録");
        record.Timestamp = QDateTime(QDate(2025, 4, 1), QTime(9, 30, 15));
        record.page(1).item(1).Text = richTextOfSize(DocumentBytes);
        const QString file = Database::NewFileName(record.Timestamp);
        Database::SaveDocument(file, record, Database::Sequential);
        return file;
    }();
    return path;
}

void quiet(QString &) {}

// The whole path a user waits for: the click, the file read, the text set
// into the box and its first page painted.
void OpenLargeDocumentToFirstPage(benchmark::State &state)
{
    largeDocumentPath();
    Workspace workspace;
    workspace.setInfoDlg(new InfoDlg(&workspace));
    workspace.resize(1366, 768);
    workspace.show();
    workspace.Reload();
    workspace.ApplySetting();
    workspace.Start();
    QCoreApplication::processEvents();
    workspace.welcomeBox()->fillLists();
    QTableWidget *recent = workspace.welcomeBox()->MenuBoxFigures(WelcomeBox::RecentPage);
    for (auto _ : state) {
        emit recent->cellClicked(0, 0);
        auto *applet = qobject_cast<DatabaseApplet *>(workspace.activeApplet());
        WordProcessor *box = applet ? applet->WordProcessors(1) : nullptr;
        if (!box || box->document()->isEmpty()) {
            state.SkipWithError("the document did not open");
            break;
        }
        box->viewport()->grab();
        state.PauseTiming();
        workspace.welcomeBox()->show();
        state.ResumeTiming();
    }
}
BENCHMARK(OpenLargeDocumentToFirstPage)->Unit(benchmark::kMillisecond)->Iterations(3);

void LoadLargeDocumentFile(benchmark::State &state)
{
    const QString path = largeDocumentPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(Database::LoadDocument(path, Database::Sequential).page(1).item(1).Text.size());
}
BENCHMARK(LoadLargeDocumentFile)->Unit(benchmark::kMillisecond)->Iterations(3);

void ReadLargeRichText(benchmark::State &state)
{
    const QString text = Database::LoadDocument(largeDocumentPath(), Database::Sequential).page(1).item(1).Text;
    for (auto _ : state) {
        QTextDocument document;
        RichTextCodec::read(text, &document);
        benchmark::DoNotOptimize(document.characterCount());
    }
}
BENCHMARK(ReadLargeRichText)->Unit(benchmark::kMillisecond)->Iterations(3);

// The rest of the text is laid out in the background once the first page
// shows: the longest the window then goes without answering.
void LongestPauseAfterOpening(benchmark::State &state)
{
    const DocumentRecord loaded = Database::LoadDocument(largeDocumentPath(), Database::Sequential);
    qint64 longest = 0;
    for (auto _ : state) {
        DocumentRecord record = loaded;
        DatabaseApplet applet;
        applet.resize(1000, 800);
        applet.show();
        applet.setRecord(&record);
        applet.setDocument(10);
        QElapsedTimer clock;
        clock.start();
        for (qint64 last = 0; clock.elapsed() < 3000; last = clock.elapsed()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            longest = qMax(longest, clock.elapsed() - last);
        }
    }
    state.counters["longest_pause_ms"] = double(longest);
}
BENCHMARK(LongestPauseAfterOpening)->Unit(benchmark::kMillisecond)->Iterations(1);

// After typing pauses, the record's text is written again from the box.
void RewriteRecordAfterTyping(benchmark::State &state)
{
    const DocumentRecord loaded = Database::LoadDocument(largeDocumentPath(), Database::Sequential);
    DocumentRecord record = loaded;
    DatabaseApplet applet;
    applet.resize(1000, 800);
    applet.setRecord(&record);
    applet.setDocument(10);
    WordProcessor *box = applet.WordProcessors(1);
    for (auto _ : state) {
        state.PauseTiming();
        box->textCursor().insertText(QStringLiteral("あ"));
        box->cleanUpNow();
        state.ResumeTiming();
        applet.syncRecord();
    }
}
BENCHMARK(RewriteRecordAfterTyping)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    PrivateHome home;
    QApplication application(argc, argv);
    Globals::GraphicOn = false;
    Globals::MusicOn = false;
    Workspace::setCharacterRoutine(quiet);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
