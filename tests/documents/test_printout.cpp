// The word processor's printout on a PDF printer written straight to a file:
// where the rich text lands on the sheet (read back with pdftotext -bbox), how
// text that runs over its box goes on to the next sheet, and how the
// document's printer codes shape the job.
#include "documents/WordProcessor.h"
#include "platform/PrinterDevice.h"
#include "support/PdfReadBack.h"
#include "support/WordProcessorHost.h"
#include "tools/Printing.h"

#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace {

using namespace PdfReadBack;

// The numbered lines ("第N行…") of a page, top to bottom: their tops and numbers.
QList<QPair<double, int>> linesOf(const QList<Word> &words)
{
    static const QRegularExpression number(QStringLiteral("第(\\d+)行"));
    QList<QPair<double, int>> lines;
    for (const Word &word : words) {
        if (const auto match = number.match(word.text); match.hasMatch())
            lines.append({word.box.top(), match.captured(1).toInt()});
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

const QString leftText = QStringLiteral("左寄せの段落です");
const QString centredText = QStringLiteral("中央の見出し");
const QString rightText = QStringLiteral("右寄せの署名");
const QString bulletText = QStringLiteral("箇条書きの項目");

} // namespace

class TestPrintout : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<WordProcessorHost> m_fixture;

    DatabaseApplet *applet() const { return m_fixture->applet; }
    WordProcessor *box(int number) const { return applet()->WordProcessors(number); }

    // Prints to a PDF file on paper without an unprintable edge; empty when nothing was printed.
    QString printToPdf(const QString &name)
    {
        const QString file = m_folder.filePath(name);
        auto device = std::make_unique<PrinterDevice>(file);
        device->printer()->setFullPage(true);
        m_fixture->host.printing()->setPrinter(std::move(device));
        return applet()->Printout() ? file : QString();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        m_folder.setAutoRemove(qEnvironmentVariableIsEmpty("LANTERN_KEEP_PRINTOUTS"));
        // No print system: the jobs go to PDF files only.
        qputenv("CUPS_SERVER", m_folder.filePath(QStringLiteral("no-cups.sock")).toUtf8());
    }

    void init() { m_fixture = std::make_unique<WordProcessorHost>(); }
    void cleanup() { m_fixture.reset(); }

    void theBoxTextLandsWhereTheBoxLiesOnTheDocumentsPaper_data()
    {
        QTest::addColumn<int>("paperCode");
        QTest::addColumn<int>("screenZoom");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QString>("pageSize"); // pdfinfo's, in points
        QTest::newRow("A4") << 10 << 100 << 1.0 << "595(\\.\\d+)? x 842";
        // JIS B5 is 182 x 257 mm; a layout made for A4 shrinks to 86 % on it,
        // and a page shown at 150 % is not printed larger for it.
        QTest::newRow("B5") << 13 << 150 << 0.86 << "51[56](\\.\\d+)? x 72[89]";
    }

    void theBoxTextLandsWhereTheBoxLiesOnTheDocumentsPaper()
    {
        QFETCH(int, paperCode);
        QFETCH(int, screenZoom);
        QFETCH(double, scale);
        QFETCH(QString, pageSize);
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate); // box at 1.5, 2.0, 18 x 25.7 cm
        record.PaperSetting1 = paperCode;
        m_fixture->open(record);
        box(1)->setHtml(QStringLiteral("<p style=\"font-size:12pt\">%1</p><p align=\"center\" style=\"font-size:24pt\">%2</p>"
                                       "<p align=\"right\" style=\"font-size:12pt\">%3</p><ul><li style=\"font-size:12pt\">%4</li></ul>")
                            .arg(leftText, centredText, rightText, bulletText));
        applet()->setProperties(QStringLiteral("Zoom"), screenZoom);

        const QString pdf = printToPdf(QStringLiteral("layout.pdf"));
        QVERIFY(!pdf.isEmpty());
        QCOMPARE(PdfReadBack::pageCount(pdf), 1);
        QVERIFY2(PdfReadBack::info(pdf).contains(QRegularExpression("Page size:\\s+" + pageSize)), qPrintable(PdfReadBack::info(pdf)));

        const QList<Word> words = PdfReadBack::words(pdf, 1);
        const QRectF left = boxAround(words, leftText), centred = boxAround(words, centredText);
        const QRectF right = boxAround(words, rightText), bullet = boxAround(words, bulletText);
        QVERIFY(!left.isNull() && !centred.isNull() && !right.isNull() && !bullet.isNull());
        // The text starts in the box's corner, a few tenths of a millimetre inside.
        QVERIFY2(left.left() >= 1.5 * scale && left.left() < 1.5 * scale + 0.25, qPrintable(QString::number(left.left())));
        QVERIFY2(left.top() >= 2.0 * scale - 0.05 && left.top() < 2.0 * scale + 0.3, qPrintable(QString::number(left.top())));
        // The box runs from 1.5 to 19.5 cm: its middle is at 10.5.
        QVERIFY2(qAbs(centred.center().x() - 10.5 * scale) < 0.15, qPrintable(QString::number(centred.center().x())));
        QVERIFY2(right.right() <= 19.5 * scale && right.right() > 19.5 * scale - 0.25, qPrintable(QString::number(right.right())));
        // The bullet's paragraph is indented; paragraphs follow each other down the page.
        QVERIFY(bullet.left() > left.left() + 0.4 * scale);
        QVERIFY(left.bottom() <= centred.top() + 0.05 && centred.bottom() <= right.top() + 0.05);
        QVERIFY(right.bottom() <= bullet.top() + 0.05);
        // 24 points are twice 12, and 12 points are 0.42 cm: letters print at their real size.
        QVERIFY2(qAbs(centred.height() / left.height() - 2.0) < 0.1, qPrintable(QString::number(centred.height() / left.height())));
        const double letter = left.width() / leftText.size();
        QVERIFY2(qAbs(letter - scale * 12 * 2.54 / 72) < 0.03, qPrintable(QString::number(letter)));
    }

    // Box 1 runs from 2 to 12 cm, room for about 16 of its 20 lines; box 2
    // lies below it, 4 to 14 cm across from 12 cm down.
    void eachBoxKeepsItsRectangleAndOnlyOverflowGoesOnToTheNextSheet()
    {
        DocumentRecord record = WordProcessorHost::withBoxes(
            {WordProcessorHost::box(DocumentItem::RichText, 4, 12, 10, 5)});
        record.page(1).item(1).Height = 10.0f;
        m_fixture->open(record);
        QStringList lines;
        for (int line = 1; line <= 20; ++line)
            lines << QStringLiteral("第%1行目の文章です").arg(line);
        box(1)->setPlainText(lines.join(QLatin1Char('\n')));
        box(2)->setHtml(QStringLiteral("<p align=\"center\">%1</p>").arg(centredText));

        const QString pdf = printToPdf(QStringLiteral("overflow.pdf"));
        QCOMPARE(PdfReadBack::pageCount(pdf), 2);
        const QList<Word> firstWords = PdfReadBack::words(pdf, 1), secondWords = PdfReadBack::words(pdf, 2);
        const auto first = linesOf(firstWords), second = linesOf(secondWords);
        QVERIFY(!first.isEmpty() && !second.isEmpty());
        // Every line once, in order, none lost or doubled at the break.
        QCOMPARE(first.first().second, 1);
        QCOMPARE(second.first().second, first.last().second + 1);
        QCOMPARE(second.last().second, 20);
        QCOMPARE(first.size() + second.size(), 20);
        // The first sheet holds only what fits into the box, the rest goes into the same rectangle on the next.
        for (const Word &word : firstWords)
            QVERIFY2(word.box.top() >= 12.0 || word.box.bottom() <= 12.0 + 0.01, qPrintable(word.text));
        QVERIFY(qAbs(second.first().first - first.first().first) < 0.05);
        for (const Word &word : secondWords)
            QVERIFY2(word.box.top() >= 2.0 && word.box.bottom() <= 12.0 + 0.01, qPrintable(word.text));
        // The second box is printed once, centred in its own rectangle.
        const QRectF centred = boxAround(firstWords, centredText);
        QVERIFY2(qAbs(centred.center().x() - 9.0) < 0.15, qPrintable(QString::number(centred.center().x())));
        QVERIFY(centred.top() >= 12.0 && centred.top() < 12.4);
        QVERIFY(boxAround(secondWords, centredText).isNull());
    }

    // Only the word processor prints, and only once there is a printer.
    void printoutNeedsTheWordProcessorAndAPrinter()
    {
        int beeps = 0;
        connect(applet(), &Applet::beeped, this, [&] { ++beeps; });
        m_fixture->open();
        QCOMPARE(applet()->Printout(), false); // no printer at all
        QCOMPARE(beeps, 0);
        QVERIFY(!m_fixture->host.printing()->printer());

        // Any other kind beeps once and prints nothing.
        for (int kind : {0, 11}) {
            applet()->setDocument(kind);
            QVERIFY(printToPdf(QStringLiteral("screen.pdf")).isEmpty());
        }
        QCOMPARE(beeps, 2);
        QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("screen.pdf"))));

        // An empty document still gives its one sheet, and no blank one after it.
        applet()->setDocument(10);
        QCOMPARE(PdfReadBack::pageCount(printToPdf(QStringLiteral("empty.pdf"))), 1);
        QCOMPARE(beeps, 2);
    }
};

QTEST_MAIN(TestPrintout)
#include "test_printout.moc"
