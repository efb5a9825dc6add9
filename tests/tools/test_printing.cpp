// The print layout engine on a PDF printer written straight to a file: the
// coordinate rules, the per-job and per-page printer set-up, and where text
// really lands on the page (read back with pdftotext -bbox).
#include "platform/FontSubstitution.h"
#include "platform/PrinterDevice.h"
#include "platform/vb/VbError.h"
#include "support/PdfReadBack.h"
#include "tools/Printing.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPrinter>
#include <QProcess>
#include <QRawFont>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Word = PdfReadBack::Word;

// Whether a word read back is the text that was printed. The faces draw some
// kanji and their radical forms (文 and ⽂) with one glyph, and the PDF's text
// layer may name either: compare the glyphs of the printing face instead.
bool sameText(const QString &read, const QString &printed)
{
    if (read == printed)
        return true;
    if (read.size() != printed.size())
        return false;
    static const QRawFont face = QRawFont::fromFont(FontSubstitution::font(QStringLiteral("MS UI Gothic"), 12));
    const QList<quint32> glyphs = face.glyphIndexesForString(printed);
    return !glyphs.contains(0) && face.glyphIndexesForString(read) == glyphs;
}

QRectF boxOf(const QList<Word> &words, const QString &text)
{
    for (const Word &word : words) {
        if (sameText(word.text, text))
            return word.box;
    }
    return {};
}

} // namespace

class TestPrinting : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_files = 0;

    QString nextFile() { return m_folder.filePath(QStringLiteral("page%1.pdf").arg(++m_files)); }

    // A job on an A4 PDF printer whose printable area is inset 1 cm on every
    // side: 19 cm by 27.7 cm of scale.
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

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        // No real print system: these tests print to files only.
        qputenv("CUPS_SERVER", m_folder.filePath(QStringLiteral("no-cups.sock")).toUtf8());
    }

    void withoutAnyPrinterAllocThrowsAPrinterError()
    {
        Printing printing;
        QVERIFY(!printing.printer());
        try {
            printing.Alloc(true);
            QFAIL("Alloc found a printer where there is none");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 484);
        }
        QVERIFY_THROWS_EXCEPTION(VbError, printing.Locate(1, 1, false));
        QVERIFY_THROWS_EXCEPTION(VbError, printing.LPrint(0, QStringLiteral("文字")));
        // Margins are the class's own and need no printer.
        printing.Margins(0, 2);
        QCOMPARE(printing.leftMargin(), 2.0f);
    }

    void marginsByCode()
    {
        Printing printing;
        printing.Margins(0, 1.5f);
        QCOMPARE(printing.topMargin(), 1.5f);
        QCOMPARE(printing.bottomMargin(), 1.5f);
        QCOMPARE(printing.leftMargin(), 1.5f);
        QCOMPARE(printing.rightMargin(), 1.5f);
        printing.Margins(1, 1);
        printing.Margins(2, 2);
        printing.Margins(3, 3);
        printing.Margins(4, 4);
        printing.Margins(5, 9);
        printing.Margins(-1, 9);
        QCOMPARE(printing.topMargin(), 1.0f);
        QCOMPARE(printing.bottomMargin(), 2.0f);
        QCOMPARE(printing.leftMargin(), 3.0f);
        QCOMPARE(printing.rightMargin(), 4.0f);
    }

    void allocSetsUpTheJob_data()
    {
        QTest::addColumn<int>("paperSize");
        QTest::addColumn<int>("zoom");
        QTest::newRow("A4 prints unscaled (zoom 0)") << 9 << 0;
        QTest::newRow("JIS B5 shrinks to 86 %") << 13 << 86;
        QTest::newRow("Letter") << 1 << 100;
        QTest::newRow("A3") << 8 << 100;
    }

    void allocSetsUpTheJob()
    {
        QFETCH(int, paperSize);
        QFETCH(int, zoom);
        auto device = std::make_unique<PrinterDevice>(nextFile());
        device->setPaperSize(paperSize);
        device->setPaperBin(2);
        device->setPrintQuality(-4);
        device->setCopies(3);
        device->setDuplex(2);
        device->setZoom(50);
        Printing printing;
        printing.setPrinter(std::move(device));
        printing.Alloc(true);
        const PrinterDevice *printer = printing.printer();
        QCOMPARE(printer->paperSize(), paperSize);
        QCOMPARE(printer->zoom(), zoom);
        QCOMPARE(printer->paperBin(), 7);
        QCOMPARE(printer->printQuality(), -3);
        QCOMPARE(printer->copies(), 1);
        QCOMPARE(printer->duplex(), 1);
        printing.EndDoc();
    }

    void jisB5IsTheJapaneseSize()
    {
        PrinterDevice printer(nextFile());
        printer.setPaperSize(13);
        QCOMPARE(printer.paperWidth(), 18.2);
        QCOMPARE(printer.paperHeight(), 25.7);
        QVERIFY_THROWS_EXCEPTION(VbError, printer.setPaperSize(9999));
    }

    void orientationFollowsThePage_data()
    {
        QTest::addColumn<QSizeF>("page");
        QTest::addColumn<int>("orientation");
        QTest::newRow("A4 upright") << QSizeF(21, 29.7) << 1;
        QTest::newRow("A4 across") << QSizeF(29.7, 21) << 2;
        QTest::newRow("square") << QSizeF(20, 20) << 1;
        // Whole numbers first: 29.4 → 29 over 30 is 0.
        QTest::newRow("a little wider") << QSizeF(30, 29.4) << 2;
        // 29.5 rounds to even 30, so 30 over 30.
        QTest::newRow("rounded to even") << QSizeF(30.4, 29.5) << 1;
    }

    void orientationFollowsThePage()
    {
        QFETCH(QSizeF, page);
        QFETCH(int, orientation);
        auto device = std::make_unique<PrinterDevice>(nextFile());
        device->setOrientation(orientation == 1 ? 2 : 1);
        Printing printing;
        printing.setPrinter(std::move(device));
        printing.Alloc(true, &page);
        QCOMPARE(printing.printer()->orientation(), orientation);
        printing.EndDoc();
    }

    void defineComesOnceAJobBeforeDrawing()
    {
        auto printing = std::make_unique<Printing>();
        printing->setPrinter(std::make_unique<PrinterDevice>(nextFile()));
        QSizeF page(21, 29.7);
        QList<qint16> tags;
        QList<QSizeF *> pages;
        connect(printing.get(), &Printing::Define, this, [&](qint16 tag, QSizeF *given) {
            tags.append(tag);
            pages.append(given);
            QVERIFY(!printing->printer()->isPrinting());
            // The host's chance to change the set-up: here the zoom.
            printing->printer()->setZoom(50);
        });
        printing->Alloc(true, &page, 12);
        QCOMPARE(tags, QList<qint16>{ 12 });
        QCOMPARE(pages.first(), &page);
        printing->SetFont(0, 10);
        QCOMPARE(printing->printer()->fontSize(), 5.0f);
        printing->Alloc(false, &page, 13);
        QCOMPARE(tags.size(), 1);
        printing->EndDoc();
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
        QCOMPARE(printer->fontName(), QStringLiteral("MS UI Gothic"));
        QCOMPARE(printer->fontSize(), 9.0f);
        QCOMPARE(printer->fontCharset(), 128);
        QCOMPARE(printer->drawWidth(), 1);
        QCOMPARE(printer->drawStyle(), 0);
        QCOMPARE(printer->foreColor(), QColor(Qt::black));
        QCOMPARE(printer->currentX(), 0.0);
        QCOMPARE(printer->currentY(), 0.0);
        QVERIFY(printer->isPrinting());
        // The margins are the caller's and stay.
        QCOMPARE(printing->leftMargin(), 2.0f);
        printing->EndDoc();
    }

    void locateFromTheMarginsOrRelative()
    {
        auto printing = newJob(nextFile());
        printing->Margins(3, 2);
        printing->Margins(1, 1.5f);
        const PrinterDevice *printer = printing->printer();

        printing->Locate(3, 4, false);
        QCOMPARE(printer->currentX(), 5.0);
        QCOMPARE(printer->currentY(), 5.5);
        printing->Locate(-1, 5, false);
        QCOMPARE(printer->currentX(), 5.0);
        QCOMPARE(printer->currentY(), 6.5);
        printing->Locate(1, -1, false);
        QCOMPARE(printer->currentX(), 3.0);
        QCOMPARE(printer->currentY(), 6.5);
        // Relative, -1 is a step like any other.
        printing->Locate(-1, -1, true);
        QCOMPARE(printer->currentX(), 2.0);
        QCOMPARE(printer->currentY(), 5.5);
        printing->EndDoc();
    }

    void viewportEndsStrictlyBeforeTheMargins()
    {
        auto printing = newJob(nextFile());
        const PrinterDevice *printer = printing->printer();
        QCOMPARE(printer->scaleWidth(), 19.0);
        QCOMPARE(printer->scaleHeight(), 27.7);
        printing->Margins(3, 2);
        printing->Margins(4, 1.5f);
        printing->Margins(1, 1);
        printing->Margins(2, 2.5f);

        printing->Locate(15.5f, 0, false);   // x = 17.5, on the right margin
        QVERIFY(!printing->IsViewportX(0));
        QVERIFY(printing->IsViewportX(-0.01f));
        QVERIFY(!printing->IsViewportX(0.01f));
        printing->Locate(0, -1, false);
        QVERIFY(printing->IsViewportX(15.25f));

        printing->Locate(-1, 24.2f, false);   // y = 25.2, on the bottom margin
        QVERIFY(printing->IsViewportY(-0.01f));
        QVERIFY(!printing->IsViewportY(0.01f));
        printing->Locate(-1, 24, false);
        QVERIFY(printing->IsViewportY(0.19f));
        QVERIFY(!printing->IsViewportY(0.21f));
        printing->EndDoc();
    }

    void paddingIsTheUnprintableStrip()
    {
        auto printing = newJob(nextFile());
        QCOMPARE(printing->PaddingX(), 1.0f);
        QCOMPARE(printing->PaddingY(), 1.0f);
        printing->EndDoc();
    }

    void stepsByLinesAndTabs()
    {
        auto printing = newJob(nextFile());
        const PrinterDevice *printer = printing->printer();
        const double perCm = printer->printer()->logicalDpiY() / 2.54;
        const auto lineOf = [&](qreal points) {
            QFont font = FontSubstitution::font(QStringLiteral("MS UI Gothic"), points);
            font.setHintingPreference(QFont::PreferNoHinting);
            return QFontMetricsF(font, printer->printer()).height() / perCm;
        };

        printing->Locate(0, 2, false);
        printing->StepY(0);
        QVERIFY(qAbs(printer->currentY() - (2 + lineOf(9))) < 1e-9);
        printing->SetFont(0, 18);
        printing->Locate(0, 2, false);
        printing->StepY(0);
        QVERIFY(qAbs(printer->currentY() - (2 + lineOf(18))) < 1e-9);
        QVERIFY(lineOf(18) > 1.9 * lineOf(9));
        printing->StepY(0.25f);
        QVERIFY(qAbs(printer->currentY() - (2.25 + lineOf(18))) < 1e-6);

        printing->Locate(1, -1, false);
        printing->StepX(2);
        QCOMPARE(printer->currentX(), 3.0);
        printing->StepX(0);
        const double tab = printer->currentX() - 3;
        QVERIFY(tab > 0);
        QVERIFY(tab < printer->textWidth(QStringLiteral("あ")));
        printing->EndDoc();
    }

    void setFontByFaceAndZoomedSize()
    {
        auto printing = newJob(nextFile());
        PrinterDevice *printer = printing->printer();
        printing->SetFont(3, 12);
        QCOMPARE(printer->fontName(), QStringLiteral("ＭＳ 明朝"));
        QCOMPARE(printer->fontSize(), 12.0f);   // zoom 0 on A4: unscaled
        printing->SetFont(7, 0);
        printing->SetFont(-1, 0);
        QCOMPARE(printer->fontName(), QStringLiteral("ＭＳ 明朝"));
        QCOMPARE(printer->fontSize(), 12.0f);
        printing->SetFont(4, 0);
        QCOMPARE(printer->fontName(), QStringLiteral("ＭＳ Ｐ明朝"));
        printing->SetFont(1, 0);
        QCOMPARE(printer->fontName(), QStringLiteral("ＭＳ ゴシック"));
        printing->SetFont(2, 0);
        QCOMPARE(printer->fontName(), QStringLiteral("ＭＳ Ｐゴシック"));

        printer->setZoom(86);
        printing->SetFont(0, 10);
        QCOMPARE(printer->fontName(), QStringLiteral("MS UI Gothic"));
        QCOMPARE(printer->fontSize(), 8.6f);
        printer->setZoom(100);
        printing->SetFont(-1, 10);
        QCOMPARE(printer->fontSize(), 10.0f);
        printing->EndDoc();
    }

    void setDrawingInWholePixels()
    {
        auto printing = newJob(nextFile(), 13);
        PrinterDevice *printer = printing->printer();
        QCOMPARE(printer->printer()->logicalDpiX(), 1200);
        // 0.1 cm × 86 % at 1200 dpi is 40.6 pixels: rounded to 41.
        printing->SetDrawing(-1, 0.1f);
        QCOMPARE(printer->drawWidth(), 41);
        QCOMPARE(printer->drawStyle(), 0);
        printing->SetDrawing(3, 0);
        QCOMPARE(printer->drawWidth(), 41);
        QCOMPARE(printer->drawStyle(), 3);
        printer->setZoom(0);
        // 0.0254 cm is 12 pixels; 0.02751 cm is 12.998, still 13 after rounding.
        printing->SetDrawing(-1, 0.0254f);
        QCOMPARE(printer->drawWidth(), 12);
        printing->SetDrawing(-1, 0.02751f);
        QCOMPARE(printer->drawWidth(), 13);
        QVERIFY_THROWS_EXCEPTION(VbError, printing->SetDrawing(9, 0));
        printing->EndDoc();
    }

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
        QCOMPARE(printer->currentX(), 9.5);
        QCOMPARE(printer->currentY(), 7.0);
        printing->Locate(10, -1, false);
        printing->LPrint(Printing::AlignRight, QStringLiteral("手前"), 1, true);
        printing->Locate(-1, 6, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("長体の文字列"), 0, false, false,
                         Printing::PrintPosition::AfterText, 0.5f);
        const double condensedEnd = printer->currentX();
        printing->Locate(-1, 7, false);
        printing->LPrint(Printing::AlignLeft, QStringLiteral("長体の文字列"));
        const double normalEnd = printer->currentX();
        // A text with its top on y = 12, for the vertical rule.
        printer->setCurrentX(2);
        printer->setCurrentY(12);
        printer->print(QStringLiteral("基準"));
        printing->EndDoc();

        // Sheet coordinates: 1 cm of unprintable strip before the scale.
        const QList<Word> words = PdfReadBack::words(file);
        const double tolerance = 0.05;
        const auto near = [&](double actual, double expected) {
            if (qAbs(actual - expected) <= tolerance)
                return true;
            qWarning() << "at" << actual << "expected" << expected;
            return false;
        };

        const QRectF left = boxOf(words, QStringLiteral("左寄せの文字"));
        QVERIFY(!left.isNull());
        QVERIFY(near(left.left(), 1 + 2 + 1));
        QVERIFY(near(left.right(), 1 + leftEnd));
        QVERIFY(near(left.center().y(), 1 + 5));
        // The line's y is the text's middle: half a line below its top.
        const QRectF reference = boxOf(words, QStringLiteral("基準"));
        QVERIFY(!reference.isNull());
        QVERIFY(qAbs((left.top() - (1 + 5 - half)) - (reference.top() - (1 + 12))) < 0.005);

        const QRectF next = boxOf(words, QStringLiteral("続き"));
        QVERIFY(near(next.left(), 1 + leftEnd + 0.5));
        QVERIFY(near(next.center().y(), 1 + 5));

        const QRectF right = boxOf(words, QStringLiteral("右寄せ"));
        QVERIFY(near(right.right(), 1 + 19 - 1.5 - 0.5));

        const QRectF centred = boxOf(words, QStringLiteral("中央の見出し"));
        QVERIFY(near(centred.center().x(), 1 + 2 + (19 - 2 - 1.5) / 2));
        QVERIFY(near(centred.center().y(), 1 + 7));

        const QRectF before = boxOf(words, QStringLiteral("手前"));
        QVERIFY(near(before.right(), 1 + 12 - 1));

        QList<QRectF> lengthened;
        for (const Word &word : words) {
            if (sameText(word.text, QStringLiteral("長体の文字列")))
                lengthened.append(word.box);
        }
        QCOMPARE(lengthened.size(), 2);
        const QRectF condensed = lengthened.at(0).top() < lengthened.at(1).top() ? lengthened.at(0)
                                                                                 : lengthened.at(1);
        const QRectF normal = lengthened.at(0).top() < lengthened.at(1).top() ? lengthened.at(1)
                                                                              : lengthened.at(0);
        QVERIFY(near(condensed.left(), 1 + 2));
        QVERIFY(near(condensed.width(), normal.width() / 2));
        QVERIFY(near(condensed.height(), normal.height()));
        QVERIFY(near(condensedEnd - 2, (normalEnd - 2) / 2));
    }

    void b5PrintsTheA4LayoutAt86Percent()
    {
        QRectF boxes[2];
        const int sizes[2] = { 9, 13 };
        for (int i = 0; i < 2; ++i) {
            const QString file = nextFile();
            auto printing = newJob(file, sizes[i]);
            printing->SetFont(0, 20);
            printing->Locate(-1, 3, false);
            printing->LPrint(Printing::AlignLeft, QStringLiteral("日本語の本文"), 2);
            printing->EndDoc();
            boxes[i] = boxOf(PdfReadBack::words(file), QStringLiteral("日本語の本文"));
            QVERIFY(!boxes[i].isNull());
        }
        QVERIFY(qAbs(boxes[1].width() / boxes[0].width() - 0.86) < 0.01);
        QVERIFY(qAbs(boxes[1].height() / boxes[0].height() - 0.86) < 0.01);
        // Positions are centimetres on either paper.
        QVERIFY(qAbs(boxes[1].left() - boxes[0].left()) < 0.05);
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
        QCOMPARE(QProcess::execute(QStringLiteral("pdftoppm"),
                                   { QStringLiteral("-r"), QStringLiteral("254"), QStringLiteral("-png"),
                                     QStringLiteral("-singlefile"), file, prefix }),
                 0);
        const QImage page(prefix + QStringLiteral(".png"));
        QVERIFY(!page.isNull());
        const auto dark = [&](double xCm, double yCm) {
            return qGray(page.pixel(qRound(xCm * 100), qRound(yCm * 100))) < 128;
        };
        // Sheet = 1 cm strip + 2 cm margin + the caller's coordinates.
        QVERIFY(dark(1 + 2 + 3, 1 + 2 + 1));         // the mark, on the text's start
        QVERIFY(dark(1 + 2 + 3 - 0.04, 1 + 2 + 1 - 0.04));
        QVERIFY(!dark(1 + 2 + 3 - 0.08, 1 + 2 + 1));
        QVERIFY(dark(1 + 2 + 5, 1 + 2 + 5));         // the rule
        QVERIFY(!dark(1 + 2 + 5, 1 + 2 + 5.1));
        QVERIFY(!dark(1 + 2 + 10.1, 1 + 2 + 5));
        QVERIFY(dark(1 + 2 + 1, 1 + 2 + 10));        // the box's sides
        QVERIFY(dark(1 + 2 + 6, 1 + 2 + 10));
        QVERIFY(dark(1 + 2 + 3.5, 1 + 2 + 12));
        QVERIFY(!dark(1 + 2 + 3.5, 1 + 2 + 10));     // not filled
    }

    void pagesFollowNewPageWithoutABlankLastOne()
    {
        const QString file = nextFile();
        auto printing = newJob(file);
        for (int page = 1; page <= 3; ++page) {
            printing->Alloc(false);
            printing->LPrint(Printing::AlignLeft, QStringLiteral("%1ページ目").arg(page));
            printing->NewPage();
        }
        printing->EndDoc();
        QCOMPARE(PdfReadBack::pageCount(file), 3);
        QCOMPARE(boxOf(PdfReadBack::words(file, 3), QStringLiteral("3ページ目")).isNull(), false);
    }
};

QTEST_MAIN(TestPrinting)
#include "test_printing.moc"
