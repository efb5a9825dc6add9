// Prints a Japanese document of ten sheets (sizes, alignments and bullets)
// from the word processor into a PDF file, as the print button does.
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "documents/WordProcessor.h"
#include "platform/PrinterDevice.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"
#include "documents/AppletHost.h"

#include <QApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <benchmark/benchmark.h>

namespace {

const QStringList sentences = {
    QStringLiteral("今日は朝から良い天気で、庭の柿の実が色づいてきました。縁側で日向ぼっこをしながら、"
                   "去年の秋に孫と一緒に干し柿を作ったことを思い出しています。"),
    QStringLiteral("町内会のお知らせ：十一月二十九日（日）午前九時より公園の清掃活動を行います。"),
    QStringLiteral("電話番号　０３－１２３４－５６７８　担当　山田"),
};

class BenchHost : public QWidget, public AppletHost
{
public:
    BenchHost()
        : m_printing(new Printing(this))
    {}
    InfoDlg *infoDlg() const override { return nullptr; }
    Printing *printing() const override { return m_printing; }

private:
    Printing *m_printing;
};

void writeTenSheets(QTextDocument *document)
{
    QTextCursor cursor(document);
    for (int paragraph = 0; paragraph < 272; ++paragraph) {
        if (paragraph > 0)
            cursor.insertBlock();
        QTextBlockFormat block;
        QTextCharFormat characters;
        characters.setFontPointSize(12);
        switch (paragraph % 10) {
        case 0:
            block.setAlignment(Qt::AlignHCenter);
            characters.setFontPointSize(20);
            break;
        case 9:
            block.setAlignment(Qt::AlignRight);
            break;
        default:
            break;
        }
        cursor.setBlockFormat(block);
        if (paragraph % 10 == 4 || paragraph % 10 == 5) {
            QTextListFormat list;
            list.setStyle(QTextListFormat::ListDisc);
            list.setIndent(1);
            cursor.createList(list);
        }
        cursor.insertText(sentences.at(paragraph % sentences.size()), characters);
    }
}

int pageCountOf(const QString &pdf)
{
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {pdf});
    info.waitForFinished(30000);
    static const QRegularExpression pages(QStringLiteral("Pages:\\s+(\\d+)"));
    const auto match = pages.match(QString::fromUtf8(info.readAllStandardOutput()));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

void BM_TenSheetDocumentToPdf(benchmark::State &state)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("ten.pdf"));
    BenchHost host;
    auto *applet = new DatabaseApplet(&host);
    applet->setGeometry(0, 0, 1100, 880);
    applet->Load();
    applet->Reload();
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    applet->setRecord(&record);
    applet->setDocument(10);
    writeTenSheets(applet->WordProcessors(1)->document());
    for (auto _ : state) {
        host.printing()->setPrinter(std::make_unique<PrinterDevice>(file));
        if (!applet->Printout())
            state.SkipWithError("the printout failed");
    }
    state.counters["sheets"] = pageCountOf(file);
}
BENCHMARK(BM_TenSheetDocumentToPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
