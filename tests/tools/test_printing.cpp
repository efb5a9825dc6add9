// The print layout engine on a PDF printer written straight to a file: the
// coordinate rules, the per-job and per-page printer set-up, and where text
// really lands on the page (read back with pdftotext -bbox).
#include "platform/PrinterDevice.h"
#include "platform/vb/VbError.h"
#include "support/PdfReadBack.h"
#include "tools/Printing.h"

#include <QImage>
#include <QPageLayout>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

using namespace PdfReadBack;

QRectF boxOf(const QList<Word> &words, const QString &text)
{
    return boxesOf(words, text).value(0);
}

bool near(double actual, double expected, double tolerance = 0.05)
{
    if (qAbs(actual - expected) <= tolerance)
        return true;
    qWarning() << "at" << actual << "expected" << expected;
    return false;
}

} // namespace

class TestPrinting : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_files = 0;

    QString nextFile() { return m_folder.filePath(QStringLiteral("page%1.pdf").arg(++m_files)); }

    // A job on a PDF printer whose printable area is inset 1 cm on every
    // side: on A4, 19 cm by 27.7 cm of scale.
    std::unique_ptr<Printing> newJob(const QString &file, int paperSize = 9)
    {
        auto device = std::make_unique<PrinterDevice>(file);
        device->printer()->setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
        device->setPaperSize(paperSize);
        auto printing = std::make_unique<Printing>();
        printing->setPrinter(std::move(device));
        printing->Alloc(true);
        return printing;
    }

    // Top, bottom, left, right.
    static QList<float> margins(const Printing &printing)
    {
        return {printing.topMargin(), printing.bottomMargin(), printing.leftMargin(), printing.rightMargin()};
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        // No real print system: these tests print to files only.
        qputenv("CUPS_SERVER", m_folder.filePath(QStringLiteral("no-cups.sock")).toUtf8());
    }

    // Without any printer Alloc and drawing throw the printer error; the
    // margins are the class's own and need none.
    void withoutAPrinterOnlyMarginsWork()
    {
        Printing printing;
        QVERIFY(!printing.printer());
        QVERIFY_THROWS_EXCEPTION(VbError, printing.Alloc(true));
        QVERIFY_THROWS_EXCEPTION(VbError, printing.Locate(1, 1, false));
        QCOMPARE(margins(printing), (QList<float>{0, 0, 0, 0}));
        printing.Margins(0, 1.5f);
        QCOMPARE(margins(printing), (QList<float>{1.5f, 1.5f, 1.5f, 1.5f}));
        for (int code : {1, 2, 3, 4, 5, -1})
            printing.Margins(code, float(code)); // 1 top, 2 bottom, 3 left, 4 right, others nothing
        QCOMPARE(margins(printing), (QList<float>{1, 2, 3, 4}));
    }

    // A4 prints unscaled (zoom 0), JIS B5 shrinks to 86 %, other sizes 100;
    // paper bin 7, quality -3, one copy, one-sided; upright (1) when height
    // over width, in whole numbers rounded to even, is not 0.
    void allocSetsUpTheJob()
    {
        // clang-format off
        const struct { int paperSize, zoom; QSizeF page; int orientation; } jobs[] = {
            {9, 0, {21, 29.7}, 1}, {13, 86, {29.7, 21}, 2}, {1, 100, {20, 20}, 1},
            {8, 100, {30, 29.4}, 2},   // 29 over 30 is 0
            {9, 0, {30.4, 29.5}, 1},   // 29.5 rounds to even 30: 30 over 30
        };
        // clang-format on
        for (auto job : jobs) {
            auto device = std::make_unique<PrinterDevice>(nextFile());
            device->setPaperSize(job.paperSize);
            device->setPaperBin(2);
            device->setPrintQuality(-4);
            device->setCopies(3);
            device->setDuplex(2);
            device->setZoom(50);
            device->setOrientation(job.orientation == 1 ? 2 : 1);
            Printing printing;
            printing.setPrinter(std::move(device));
            printing.Alloc(true, &job.page);
            const PrinterDevice *printer = printing.printer();
            QCOMPARE(std::tuple(job.page, printer->paperSize(), printer->zoom(), printer->paperBin(), printer->printQuality(),
                                printer->copies(), printer->duplex(), printer->orientation()),
                     std::tuple(job.page, job.paperSize, job.zoom, 7, -3, 1, 1, job.orientation));
        }
    }

    void defineComesOnceAJobBeforeDrawing()
    {
        Printing printing;
        printing.setPrinter(std::make_unique<PrinterDevice>(nextFile()));
        QSizeF page(21, 29.7);
        QList<std::pair<qint16, QSizeF *>> defined;
        connect(&printing, &Printing::Define, this, [&](qint16 tag, QSizeF *given) {
            defined.append({tag, given});
            QVERIFY(!printing.printer()->isPrinting());
            printing.printer()->setZoom(50); // the host's chance to change the set-up
        });
        printing.Alloc(true, &page, 12);
        printing.SetFont(0, 10);
        QCOMPARE(printing.printer()->fontSize(), 5.0f);
        printing.Alloc(false, &page, 13);
        QCOMPARE(defined, (QList<std::pair<qint16, QSizeF *>>{{12, &page}}));
    }

    void everyPageStartsFromTheSameState()
    {
        auto printing = newJob(nextFile());
        printing->Margins(0, 2);
        printing->SetFont(3, 20);
        printing->SetDrawing(2, 0.1f);
        printing->printer()->setForeColor(Qt::red);
        printing->Locate(4, 5, false);
        printing->NewPage();
        printing->Alloc(false);
        const PrinterDevice *printer = printing->printer();
        QCOMPARE(std::tuple(printer->fontName(), printer->fontSize(), printer->fontCharset()),
                 std::tuple(QStringLiteral("MS UI Gothic"), 9.0f, 128));
        QCOMPARE(std::tuple(printer->drawWidth(), printer->drawStyle(), printer->foreColor()), std::tuple(1, 0, QColor(Qt::black)));
        QCOMPARE(std::pair(printer->currentX(), printer->currentY()), std::pair(0.0, 0.0));
        QVERIFY(printer->isPrinting());
        QCOMPARE(printing->leftMargin(), 2.0f); // the margins are the caller's and stay
    }

    // Margins left 2, top 1.5; each step from where the last one left off.
    // Then right 1.5, top 1, bottom 2.5 in a 19 × 27.7 scale: the viewport
    // ends strictly before the margins.
    void locateFromTheMarginsOrRelative()
    {
        auto printing = newJob(nextFile());
        const PrinterDevice *printer = printing->printer();
        printing->Margins(3, 2);
        printing->Margins(1, 1.5f);
        // clang-format off
        const struct { float x, y; bool relative; double atX, atY; } steps[] = {
            {3, 4, false, 5, 5.5}, {-1, 5, false, 5, 6.5}, {1, -1, false, 3, 6.5},
            {-1, -1, true, 2, 5.5},   // relative, -1 is a step like any other
        };
        // clang-format on
        for (const auto &step : steps) {
            printing->Locate(step.x, step.y, step.relative);
            QCOMPARE(std::pair(printer->currentX(), printer->currentY()), std::pair(step.atX, step.atY));
        }

        QCOMPARE(std::pair(printer->scaleWidth(), printer->scaleHeight()), std::pair(19.0, 27.7));
        QCOMPARE(std::pair(printing->PaddingX(), printing->PaddingY()), std::pair(1.0f, 1.0f));
        printing->Margins(4, 1.5f);
        printing->Margins(1, 1);
        printing->Margins(2, 2.5f);
        printing->Locate(15.5f, 24.2f, false); // x 17.5 and y 25.2: on the right and bottom margins
        for (const auto &[step, inside] : {std::pair(0.0f, false), {-0.01f, true}, {0.01f, false}})
            QCOMPARE(std::tuple(step, printing->IsViewportX(step), printing->IsViewportY(step)), std::tuple(step, inside, inside));
    }

    // One line is the height of a line of text in the current font.
    void stepsByLinesAndTabs()
    {
        auto printing = newJob(nextFile());
        const PrinterDevice *printer = printing->printer();
        QList<double> lines;
        for (float size : {9.0f, 18.0f}) {
            printing->SetFont(0, size);
            printing->Locate(0, 2, false);
            printing->StepY(0);
            lines.append(printer->currentY() - 2);
            QVERIFY(near(lines.last(), printer->textHeight(QStringLiteral("あ")), 1e-9));
        }
        QVERIFY(lines[1] > 1.9 * lines[0]);
        printing->StepY(0.25f);
        QVERIFY(near(printer->currentY(), 2.25 + lines[1], 1e-6));
        printing->Locate(1, -1, false);
        printing->StepX(2);
        QCOMPARE(printer->currentX(), 3.0);
        printing->StepX(0);
        QVERIFY(printer->currentX() > 3);
        QVERIFY(printer->currentX() - 3 < printer->textWidth(QStringLiteral("あ"))); // one tab
    }

    void fontAndLineWidthFollowTheZoom()
    {
        auto printing = newJob(nextFile());
        PrinterDevice *printer = printing->printer();
        // Zoom (-1 keeps it), face, size; then the face and size in force.
        // clang-format off
        const struct { int zoom; int face; float size; const char *name; float points; } steps[] = {
            {-1, 3, 12, "ＭＳ 明朝", 12},   // zoom 0 on A4: unscaled
            {-1, 7, 0, "ＭＳ 明朝", 12}, {-1, -1, 0, "ＭＳ 明朝", 12},
            {-1, 4, 0, "ＭＳ Ｐ明朝", 12}, {-1, 1, 0, "ＭＳ ゴシック", 12}, {-1, 2, 0, "ＭＳ Ｐゴシック", 12},
            {86, 0, 10, "MS UI Gothic", 8.6f}, {100, -1, 10, "MS UI Gothic", 10},
        };
        // clang-format on
        for (const auto &step : steps) {
            if (step.zoom >= 0)
                printer->setZoom(step.zoom);
            printing->SetFont(step.face, step.size);
            QCOMPARE(printer->fontName(), QString::fromUtf8(step.name));
            QCOMPARE(printer->fontSize(), step.points);
        }

        // Line widths in whole printer pixels.
        QCOMPARE(printer->printer()->logicalDpiX(), 1200);
        // 0.1 cm × 86 % at 1200 dpi is 40.6 pixels: 41. At zoom 0, 0.0254 cm
        // is 12 pixels and 0.02751 cm 12.998, still 13 after rounding.
        // clang-format off
        const struct { int zoom; int style; float width; int pixels; int styleAfter; } lines[] = {
            {86, -1, 0.1f, 41, 0}, {86, 3, 0, 41, 3}, {0, -1, 0.0254f, 12, 3}, {0, -1, 0.02751f, 13, 3},
        };
        // clang-format on
        for (const auto &step : lines) {
            printer->setZoom(step.zoom);
            printing->SetDrawing(step.style, step.width);
            QCOMPARE(std::pair(printer->drawWidth(), printer->drawStyle()), std::pair(step.pixels, step.styleAfter));
        }
        QVERIFY_THROWS_EXCEPTION(VbError, printing->SetDrawing(9, 0));
    }

    // Sheet coordinates: 1 cm of unprintable strip before the scale.
    // Margins: left 2, right 1.5, top 3.
    void textLandsWhereTheRulesPutIt()
    {
        const QString file = nextFile();
        auto printing = newJob(file);
        PrinterDevice *printer = printing->printer();
        printing->Margins(3, 2);
        printing->Margins(4, 1.5f);
        printing->Margins(1, 3);
        printing->SetFont(0, 12);
        const double half = printer->textHeight(QStringLiteral(" ")) / 2;

        printing->Locate(-1, 2, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("左寄せの文字"), 1);
        const double leftEnd = printer->currentX();
        QCOMPARE(printer->currentY(), 5.0);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("続き"), 0.5f, true);
        printing->LPrint(Printing::AlignRight, QStringLiteral("右寄せ"), 0.5f);
        printing->Locate(-1, 4, false);
        printing->LPrint(Printing::AlignCenter, QStringLiteral("中央の見出し"));
        QCOMPARE(std::pair(printer->currentX(), printer->currentY()), std::pair(9.5, 7.0));
        printing->Locate(10, -1, false);
        printing->LPrint(Printing::AlignRight, QStringLiteral("手前"), 1, true);
        printing->Locate(-1, 6, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("ちぢめた文字列"), 0, false, false,
                         Printing::PrintPosition::AfterText, 0.5f);
        const double condensedEnd = printer->currentX();
        printing->Locate(-1, 7, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("ちぢめた文字列"));
        const double normalEnd = printer->currentX();
        printer->setCurrentX(2);
        printer->setCurrentY(12);
        printer->print(QStringLiteral("基準")); // a text with its top on y = 12
        printing->EndDoc();

        const QList<Word> words = PdfReadBack::words(file);
        const QRectF left = boxOf(words, QStringLiteral("左寄せの文字"));
        QVERIFY(near(left.left(), 1 + 2 + 1));
        QVERIFY(near(left.right(), 1 + leftEnd));
        QVERIFY(near(left.center().y(), 1 + 5));
        // The line's y is the text's middle: half a line below its top.
        const QRectF reference = boxOf(words, QStringLiteral("基準"));
        QVERIFY(!reference.isNull());
        QVERIFY(near(left.top() - (1 + 5 - half), reference.top() - (1 + 12), 0.005));
        const QRectF next = boxOf(words, QStringLiteral("続き"));
        QVERIFY(near(next.left(), 1 + leftEnd + 0.5));
        QVERIFY(near(next.center().y(), 1 + 5));
        QVERIFY(near(boxOf(words, QStringLiteral("右寄せ")).right(), 1 + 19 - 1.5 - 0.5));
        const QRectF centred = boxOf(words, QStringLiteral("中央の見出し"));
        QVERIFY(near(centred.center().x(), 1 + 2 + (19 - 2 - 1.5) / 2));
        QVERIFY(near(centred.center().y(), 1 + 7));
        QVERIFY(near(boxOf(words, QStringLiteral("手前")).right(), 1 + 12 - 1));
        const QList<QRectF> lengthened = boxesOf(words, QStringLiteral("ちぢめた文字列"));
        QCOMPARE(lengthened.size(), 2);
        QVERIFY(near(lengthened[0].left(), 1 + 2));
        QVERIFY(near(lengthened[0].width(), lengthened[1].width() / 2));
        QVERIFY(near(lengthened[0].height(), lengthened[1].height()));
        QVERIFY(near(condensedEnd - 2, (normalEnd - 2) / 2));
    }

    void marksAndLinesAreDrawn()
    {
        const QString file = nextFile();
        auto printing = newJob(file);
        printing->Margins(0, 2);
        printing->Locate(-1, 1, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("印"), 3, false, true);
        printing->SetDrawing(0, 0.05f);
        printing->Line(0, 5, 10, 5);
        QCOMPARE(printing->printer()->currentX(), 12.0);
        printing->Line(1, 8, 6, 12, Printing::Shape::Box);
        printing->EndDoc();

        // Rendered at 254 dpi: 100 pixels to the centimetre.
        const QString prefix = m_folder.filePath(QStringLiteral("marks"));
        QCOMPARE(QProcess::execute(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("254"), QStringLiteral("-png"), QStringLiteral("-singlefile"), file, prefix}), 0);
        const QImage page(prefix + QStringLiteral(".png"));
        QVERIFY(!page.isNull());
        // Sheet = 1 cm strip + 2 cm margin + the caller's coordinates.
        // clang-format off
        const struct { double x, y; bool dark; } spots[] = {
            {3, 1, true}, {3 - 0.04, 1 - 0.04, true}, {3 - 0.08, 1, false},   // the mark, on the text's start
            {5, 5, true}, {5, 5.1, false}, {10.1, 5, false},                   // the rule
            {1, 10, true}, {6, 10, true}, {3.5, 12, true}, {3.5, 10, false},   // the box's sides, not filled
        };
        // clang-format on
        for (const auto &spot : spots) {
            const bool dark = qGray(page.pixel(qRound((3 + spot.x) * 100), qRound((3 + spot.y) * 100))) < 128;
            QVERIFY2(dark == spot.dark, qPrintable(QStringLiteral("at %1, %2").arg(spot.x).arg(spot.y)));
        }
    }
};

QTEST_MAIN(TestPrinting)
#include "test_printing.moc"
