// Reading and writing a long rich-text document: about 1 MB of RTF in the
// form the rich-text box writes (Japanese text as \'xx pairs, size, bold and
// alignment changes, bullets).

#include "platform/rtf/RtfReader.h"
#include "platform/rtf/RtfWriter.h"

#include <QCoreApplication>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <benchmark/benchmark.h>

namespace {

void buildDocument(QTextDocument *document, qsizetype targetBytes)
{
    const QString sentences[] = {
        u"今日は朝から良い天気で、庭の花がきれいに咲きました。"_qs,
        u"孫が遊びに来るので、お昼はちらし寿司を作ります。①②③"_qs,
        u"Lantern で手紙を書いています。ｶﾀｶﾅ も混ざります。"_qs,
    };
    QTextCursor cursor(document);
    QTextCharFormat normal;
    normal.setFontFamilies(QStringList{u"ＭＳ Ｐゴシック"_qs});
    normal.setFontPointSize(12);
    QTextCharFormat heading = normal;
    heading.setFontPointSize(20);
    heading.setFontWeight(QFont::Bold);

    int paragraph = 0;
    while (RtfWriter::write(document).size() < targetBytes) {
        // Grow in steps of a few hundred paragraphs, then measure again.
        for (int i = 0; i < 400; ++i, ++paragraph) {
            if (paragraph > 0)
                cursor.insertBlock();
            if (paragraph % 20 == 0) {
                QTextBlockFormat centred;
                centred.setAlignment(Qt::AlignHCenter);
                cursor.setBlockFormat(centred);
                cursor.insertText(u"第%1章"_qs.arg(paragraph / 20 + 1), heading);
                continue;
            }
            cursor.setBlockFormat(QTextBlockFormat());
            cursor.insertText(sentences[paragraph % 3], normal);
            cursor.insertText(u"大切"_qs, heading);
            cursor.insertText(sentences[(paragraph + 1) % 3], normal);
            if (paragraph % 10 == 5)
                cursor.createList(QTextListFormat::ListDisc);
        }
    }
}

const QByteArray &oneMegabyte()
{
    static const QByteArray rtf = [] {
        QTextDocument document;
        buildDocument(&document, 1024 * 1024);
        return RtfWriter::write(&document);
    }();
    return rtf;
}

void BM_ReadRtf(benchmark::State &state)
{
    const QByteArray &rtf = oneMegabyte();
    for (auto _ : state) {
        QTextDocument document;
        RtfReader::read(rtf, &document);
        benchmark::DoNotOptimize(document.characterCount());
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
    state.counters["rtf_bytes"] = static_cast<double>(rtf.size());
}
BENCHMARK(BM_ReadRtf)->Unit(benchmark::kMillisecond);

void BM_WriteRtf(benchmark::State &state)
{
    QTextDocument document;
    RtfReader::read(oneMegabyte(), &document);
    for (auto _ : state) {
        const QByteArray rtf = RtfWriter::write(&document);
        benchmark::DoNotOptimize(rtf.size());
    }
    state.SetBytesProcessed(state.iterations() * oneMegabyte().size());
}
BENCHMARK(BM_WriteRtf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
