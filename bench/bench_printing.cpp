// Lays out ten pages of Japanese text with LPrint lines, rules and boxes into
// a PDF file, the way a document printout drives the layout engine.
#include "platform/PrinterDevice.h"
#include "tools/Printing.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const QStringList sentences = {
    QStringLiteral("今日は朝から良い天気で、庭の柿の実が色づいてきました。"),
    QStringLiteral("孫が遊びに来るので、おはぎを作って待っています。"),
    QStringLiteral("町内会のお知らせ：十一月二十九日（日）午前九時より清掃活動を行います。"),
    QStringLiteral("電話番号　０３－１２３４－５６７８　担当　山田"),
};

void printTenPages(Printing &printing)
{
    QSizeF page(21, 29.7);
    printing.Alloc(true, &page, 1);
    printing.Margins(0, 2);
    for (int number = 1; number <= 10; ++number) {
        printing.Alloc(false, &page, 1);
        printing.SetFont(0, 16);
        printing.Locate(0, 0.5f, false);
        printing.LPrint(Printing::AlignCenter, QStringLiteral("お便り　第%1号").arg(number));
        printing.SetDrawing(0, 0.03f);
        printing.Line(0, 1.2f, 17, 1.2f);
        printing.SetFont(3, 10.5f);
        printing.Locate(0, 2, false);
        for (int line = 0; printing.IsViewportY(0.6f); ++line) {
            printing.LPrint(Printing::AlignLeft, sentences.at(line % sentences.size()), 0, false,
                            line % 7 == 0);
            printing.LPrint(Printing::AlignRight, QString::number(line + 1), 0, false, false,
                            Printing::PrintPosition::AfterText, line % 3 == 0 ? 0.8f : 1.0f);
            printing.StepY(0);
            printing.StepY(0.1f);
        }
        printing.Line(0, 25.2f, 17, 25.7f, Printing::Shape::Box);
        printing.NewPage();
    }
    printing.EndDoc();
}

void BM_TenPagesToPdf(benchmark::State &state)
{
    QTemporaryDir folder;
    for (auto _ : state) {
        Printing printing;
        printing.setPrinter(std::make_unique<PrinterDevice>(folder.filePath(QStringLiteral("ten.pdf"))));
        printTenPages(printing);
    }
}
BENCHMARK(BM_TenPagesToPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
