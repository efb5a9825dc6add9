// The recovery journal at a pause in typing, for a document of 200,000
// characters. Goal: under 5 ms, and none of it on the typing thread.
//   HandOver: what the typing thread spends (the text handed to the writer).
//   WriteToDisk: the writer's whole job, the document encoded, written and
//   synced to the disk.
//   EncodeOnPause: for comparison, the rich text the document already makes
//   of its box at every pause, before the journal sees it.
#include "documents/Database.h"
#include "documents/RecoveryJournal.h"
#include "documents/RichTextCodec.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace {

constexpr int Characters = 200000;

struct LongDocument
{
    LongDocument()
    {
        qputenv("XDG_STATE_HOME", folder.path().toLocal8Bit());
        const QString line = QStringLiteral("きょうは庭の梅が咲きました。孫が遊びに来る日曜日が楽しみです。Sunday 12:30\n");
        QString text;
        while (text.size() < Characters)
            text += line;
        text.truncate(Characters);
        QTextCursor(&document).insertText(text);
        record = Database::NewDocument(Database::BlankTemplate);
        record.DocumentTitle = QStringLiteral("梅の花");
        record.page(1).item(1).Text = RichTextCodec::write(&document);
    }

    QTemporaryDir folder;
    QTextDocument document;
    DocumentRecord record;
};

LongDocument &longDocument()
{
    static LongDocument made;
    return made;
}

void HandOver(benchmark::State &state)
{
    LongDocument &document = longDocument();
    RecoveryJournal journal;
    for (auto _ : state)
        journal.keep(QString(), document.record);
    journal.discard();
}
BENCHMARK(HandOver)->Unit(benchmark::kMicrosecond);

void WriteToDisk(benchmark::State &state)
{
    LongDocument &document = longDocument();
    RecoveryJournal journal;
    for (auto _ : state) {
        journal.keep(QString(), document.record);
        journal.flush();
    }
    journal.discard();
}
BENCHMARK(WriteToDisk)->Unit(benchmark::kMillisecond)->UseRealTime();

void EncodeOnPause(benchmark::State &state)
{
    LongDocument &document = longDocument();
    for (auto _ : state)
        benchmark::DoNotOptimize(RichTextCodec::write(&document.document));
}
BENCHMARK(EncodeOnPause)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
