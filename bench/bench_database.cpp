// The recent-documents list: the document folder listed and the title and
// time of every document read. Goal: 10,000 documents in under 300 ms.
#include "documents/Database.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int DocumentCount = 10000;

// A folder of documents of a typical size, in a private data folder so that
// the user's own documents are never touched.
class DocumentFolder
{
public:
    DocumentFolder()
    {
        qputenv("XDG_DATA_HOME", m_root.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_root.filePath("config").toLocal8Bit());
        const QString body = "{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}\\f0\\fs48 "
            + QString(2000, u'x') + "\\par}";
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.page(1).item(1).Text = body;
        const QDateTime start(QDate(2009, 4, 1), QTime(9, 30, 15));
        for (int i = 0; i < DocumentCount; ++i) {
            record.DocumentTitle = QStringLiteral("旅行の計画 %1").arg(i);
            record.Timestamp = start.addSecs(i * 97);
            Database::SaveDocument(Database::NewFileName(record.Timestamp), record, Database::Sequential);
        }
    }

private:
    QTemporaryDir m_root;
};

DocumentFolder &folder()
{
    static DocumentFolder made;
    return made;
}

void RecentListFromHeaders(benchmark::State &state)
{
    folder();
    for (auto _ : state) {
        int shown = 0;
        for (const QString &path : Database::ListDocuments(Database::OnlyText)) {
            const Database::Header header = Database::ReadHeader(path);
            shown += header.Timestamp.isValid();
        }
        if (shown != DocumentCount)
            state.SkipWithError("not every document was read");
    }
    state.SetItemsProcessed(state.iterations() * DocumentCount);
}
BENCHMARK(RecentListFromHeaders)->Unit(benchmark::kMillisecond);

// The same list read with the whole loader, for comparison.
void RecentListFromWholeFiles(benchmark::State &state)
{
    folder();
    for (auto _ : state) {
        int shown = 0;
        for (const QString &path : Database::ListDocuments(Database::OnlyText))
            shown += Database::LoadDocument(path, Database::Sequential).Timestamp.isValid();
        if (shown != DocumentCount)
            state.SkipWithError("not every document was read");
    }
    state.SetItemsProcessed(state.iterations() * DocumentCount);
}
BENCHMARK(RecentListFromWholeFiles)->Unit(benchmark::kMillisecond);

void ListingOnly(benchmark::State &state)
{
    folder();
    for (auto _ : state)
        benchmark::DoNotOptimize(Database::ListDocuments(Database::OnlyText));
}
BENCHMARK(ListingOnly)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
