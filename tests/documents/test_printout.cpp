// The word processor's printout on a PDF printer written straight to a file:
// where the rich text lands on the sheet (read back with pdftotext -bbox), how
// text that runs over its box goes on to the next sheet, and how the
// document's printer codes shape the job.
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "documents/WordProcessor.h"
#include "platform/PrinterDevice.h"
#include "support/AppletTestHost.h"
#include "support/PdfReadBack.h"
#include "tools/Printing.h"

#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

#include <algorithm>

namespace {

constexpr double pointsPerCm = 72 / 2.54;

using Word = PdfReadBack::Word;

// The words of a page NFKC-folded: some faces name a kanji by its radical
// form (文 as ⽂) in the PDF's text layer.
QList<Word> wordsOf(const QString &pdf, int page)
{
    QList<Word> words;
    for (const PdfReadBack::Word &word : PdfReadBack::words(pdf, page))
        words.append({ word.text.normalized(QString::NormalizationForm_KC), word.box });
    return words;
}

// The box around every word of the page that belongs to the text.
QRectF boxOf(const QList<Word> &words, const QString &text)
{
    QRectF found;
    for (const Word &word : words) {
        if (text.contains(word.text))
            found = found.isNull() ? word.box : found.united(word.box);
    }
    return found;
}

const QString leftText = QStringLiteral("左寄せの段落です");
const QString centredText = QStringLiteral("中央の見出し");
const QString rightText = QStringLiteral("右寄せの署名");
const QString bulletText = QStringLiteral("箇条書きの項目");

// Appends a paragraph with its alignment, size and bullet.
void addParagraph(QTextCursor &cursor, const QString &text, Qt::Alignment alignment, double points,
                  bool bullet = false)
{
    if (!cursor.atStart())
        cursor.insertBlock();
    QTextBlockFormat block;
    block.setAlignment(alignment);
    cursor.setBlockFormat(block);
    if (bullet) {
        QTextListFormat list;
        list.setStyle(QTextListFormat::ListDisc);
        list.setIndent(1);
        cursor.createList(list);
    }
    QTextCharFormat characters;
    characters.setFontPointSize(points);
    cursor.insertText(text, characters);
}

} // namespace

class TestPrintout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theBoxTextLandsWhereTheBoxLiesWithItsAlignmentAndSizes();
    void textLongerThanTheBoxGoesOnToTheNextSheet();
    void eachBoxKeepsItsRectangleAndOnlyOverflowFillsTheNextSheet();
    void theDocumentsPaperCodesShapeTheSheet();
    void onlyTheWordProcessorPrints();
    void withoutAnyPrinterNothingIsPrinted();

private:
    void open(const DocumentRecord &record);
    QString printToPdf(const QString &name);
    void writeSampleText();

    QTemporaryDir m_folder;
    AppletTestHost *m_host = nullptr;
    DatabaseApplet *m_applet = nullptr;
    DocumentRecord m_record;
};

void TestPrintout::initTestCase()
{
    QVERIFY(m_folder.isValid());
    m_folder.setAutoRemove(qEnvironmentVariableIsEmpty("LANTERN_KEEP_PRINTOUTS"));
    // No print system: the jobs go to PDF files only.
    qputenv("CUPS_SERVER", m_folder.filePath(QStringLiteral("no-cups.sock")).toUtf8());
}

void TestPrintout::init()
{
    m_host = new AppletTestHost;
    m_applet = new DatabaseApplet(m_host);
    m_applet->setGeometry(0, 0, 1100, 880);
    m_applet->Load();
    m_applet->Reload();
}

void TestPrintout::cleanup()
{
    delete m_host;
    m_host = nullptr;
    m_applet = nullptr;
}

void TestPrintout::open(const DocumentRecord &record)
{
    m_record = record;
    m_applet->setRecord(&m_record);
    m_applet->setDocument(10);
    m_applet->Start();
}

QString TestPrintout::printToPdf(const QString &name)
{
    const QString file = m_folder.filePath(name);
    auto device = std::make_unique<PrinterDevice>(file);
    // Paper without an unprintable edge: the printable area is the sheet.
    device->printer()->setFullPage(true);
    m_host->printing()->setPrinter(std::move(device));
    if (!m_applet->Printout())
        return {};
    return file;
}

void TestPrintout::writeSampleText()
{
    QTextCursor cursor(m_applet->WordProcessors(1)->document());
    addParagraph(cursor, leftText, Qt::AlignLeft, 12);
    addParagraph(cursor, centredText, Qt::AlignHCenter, 24);
    addParagraph(cursor, rightText, Qt::AlignRight, 12);
    addParagraph(cursor, bulletText, Qt::AlignLeft, 12, true);
}

void TestPrintout::theBoxTextLandsWhereTheBoxLiesWithItsAlignmentAndSizes()
{
    open(Database::NewDocument(Database::BlankTemplate)); // box at 1.5, 2.0, 18 x 25.7 cm
    writeSampleText();
    const QString pdf = printToPdf(QStringLiteral("a4.pdf"));
    QVERIFY(!pdf.isEmpty());
    QCOMPARE(PdfReadBack::pageCount(pdf), 1);
    QVERIFY(PdfReadBack::info(pdf).contains(QRegularExpression(QStringLiteral("Page size:\\s+595(\\.\\d+)? x 842"))));

    const QList<Word> words = wordsOf(pdf, 1);
    const QRectF left = boxOf(words, leftText);
    const QRectF centred = boxOf(words, centredText);
    const QRectF right = boxOf(words, rightText);
    const QRectF bullet = boxOf(words, bulletText);
    QVERIFY2(!left.isNull() && !centred.isNull() && !right.isNull() && !bullet.isNull(),
             qPrintable(QStringLiteral("%1 words read").arg(words.size())));

    // The text starts in the box's corner, a few tenths of a millimetre inside.
    QVERIFY2(left.left() >= 1.5 && left.left() < 1.75, qPrintable(QString::number(left.left())));
    QVERIFY2(left.top() >= 1.95 && left.top() < 2.3, qPrintable(QString::number(left.top())));
    // The box runs from 1.5 to 19.5 cm: its middle is at 10.5.
    QVERIFY2(qAbs(centred.center().x() - 10.5) < 0.15, qPrintable(QString::number(centred.center().x())));
    QVERIFY2(right.right() <= 19.5 && right.right() > 19.25, qPrintable(QString::number(right.right())));
    // The bullet's paragraph is indented past the plain one.
    QVERIFY(bullet.left() > left.left() + 0.4);
    // Paragraphs follow each other down the page, 24 points twice 12.
    QVERIFY(left.bottom() <= centred.top() + 0.05);
    QVERIFY(centred.bottom() <= right.top() + 0.05);
    QVERIFY(right.bottom() <= bullet.top() + 0.05);
    QVERIFY2(qAbs(centred.height() / left.height() - 2.0) < 0.1,
             qPrintable(QString::number(centred.height() / left.height())));
    // 12 points are 0.42 cm: the letters are printed at their real size.
    const double letter = left.width() / leftText.size();
    QVERIFY2(qAbs(letter - 12 / pointsPerCm) < 0.03, qPrintable(QString::number(letter)));
}

void TestPrintout::textLongerThanTheBoxGoesOnToTheNextSheet()
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.page(1).item(1).Height = 10.0f; // room for about 16 lines
    open(record);
    QTextCursor cursor(m_applet->WordProcessors(1)->document());
    for (int line = 1; line <= 20; ++line)
        addParagraph(cursor, QStringLiteral("第%1行目の文章です").arg(line), Qt::AlignLeft, 12);

    const QString pdf = printToPdf(QStringLiteral("overflow.pdf"));
    QVERIFY(!pdf.isEmpty());
    QCOMPARE(PdfReadBack::pageCount(pdf), 2);

    static const QRegularExpression number(QStringLiteral("第(\\d+)行"));
    auto linesOf = [](const QList<Word> &words) {
        QList<QPair<double, int>> lines;
        for (const Word &word : words) {
            const auto match = number.match(word.text);
            if (match.hasMatch())
                lines.append({ word.box.top(), match.captured(1).toInt() });
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    const QList<Word> firstWords = wordsOf(pdf, 1);
    const QList<Word> secondWords = wordsOf(pdf, 2);
    const auto first = linesOf(firstWords);
    const auto second = linesOf(secondWords);
    QVERIFY(!first.isEmpty() && !second.isEmpty());
    // Every line once, in order, none lost or doubled at the break.
    QCOMPARE(first.first().second, 1);
    QCOMPARE(second.first().second, first.last().second + 1);
    QCOMPARE(second.last().second, 20);
    QCOMPARE(first.size() + second.size(), 20);
    // The first sheet holds only what fits into the box ...
    for (const Word &word : firstWords)
        QVERIFY2(word.box.bottom() <= 2.0 + 10.0 + 0.01, qPrintable(word.text));
    // ... and the rest goes into the same rectangle on the next sheet.
    QVERIFY2(qAbs(second.first().first - first.first().first) < 0.05,
             qPrintable(QStringLiteral("%1 %2").arg(second.first().first).arg(first.first().first)));
}

void TestPrintout::eachBoxKeepsItsRectangleAndOnlyOverflowFillsTheNextSheet()
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    DocumentPage &page = record.page(1);
    page.item(1).Height = 3.0f;
    DocumentItem second = page.item(1);
    second.Left = 4.0f;
    second.Top = 12.0f;
    second.Width = 10.0f;
    second.Height = 5.0f;
    page.Items.append(second);
    page.ItemCount = 2;
    open(record);
    QTextCursor top(m_applet->WordProcessors(1)->document());
    for (int line = 1; line <= 8; ++line)
        addParagraph(top, QStringLiteral("第%1行目です").arg(line), Qt::AlignLeft, 12);
    QTextCursor lower(m_applet->WordProcessors(2)->document());
    addParagraph(lower, centredText, Qt::AlignHCenter, 12);

    const QString pdf = printToPdf(QStringLiteral("two-boxes.pdf"));
    QVERIFY(!pdf.isEmpty());
    QCOMPARE(PdfReadBack::pageCount(pdf), 2);
    const QList<Word> firstWords = wordsOf(pdf, 1);
    const QList<Word> secondWords = wordsOf(pdf, 2);
    // The second box is centred in its own rectangle, 4 to 14 cm, below 12 cm.
    const QRectF centred = boxOf(firstWords, centredText);
    QVERIFY(!centred.isNull());
    QVERIFY2(qAbs(centred.center().x() - 9.0) < 0.15, qPrintable(QString::number(centred.center().x())));
    QVERIFY(centred.top() >= 12.0 && centred.top() < 12.4);
    // The next sheet holds only the rest of the first box, at the first box's place.
    QVERIFY(boxOf(secondWords, centredText).isNull());
    QVERIFY(!secondWords.isEmpty());
    QVERIFY(boxOf(firstWords, QStringLiteral("第8行目です")).isNull());
    QVERIFY(!boxOf(secondWords, QStringLiteral("第8行目です")).isNull());
    for (const Word &word : secondWords)
        QVERIFY2(word.box.top() >= 2.0 && word.box.bottom() <= 5.0 + 0.01, qPrintable(word.text));
}

void TestPrintout::theDocumentsPaperCodesShapeTheSheet()
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.PaperSetting1 = 13; // B5
    open(record);
    writeSampleText();
    // A page shown at 150 % is not printed larger for it.
    m_applet->setProperties(QStringLiteral("Zoom"), 150);
    QCOMPARE(m_record.Zoom, 150);
    QCOMPARE(m_applet->WordProcessors(1)->textZoom(), 150);
    int defines = 0;
    connect(m_host->printing(), &Printing::Define, this, [&] { ++defines; });
    const QString pdf = printToPdf(QStringLiteral("b5.pdf"));
    QVERIFY(!pdf.isEmpty());
    QCOMPARE(defines, 1);
    QCOMPARE(m_host->printing()->printer()->paperSize(), 13);
    QCOMPARE(m_host->printing()->printer()->zoom(), 150);
    // JIS B5 is 182 x 257 mm.
    const QString info = PdfReadBack::info(pdf);
    QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Page size:\\s+51[56](\\.\\d+)? x 72[89]"))), qPrintable(info));

    // A layout made for A4 shrinks to 86 % on B5: place, size and letters.
    const QList<Word> words = wordsOf(pdf, 1);
    const QRectF left = boxOf(words, leftText);
    const QRectF centred = boxOf(words, centredText);
    const QRectF right = boxOf(words, rightText);
    QVERIFY(!left.isNull() && !centred.isNull() && !right.isNull());
    QVERIFY2(left.left() >= 1.5 * 0.86 && left.left() < 1.5 * 0.86 + 0.2, qPrintable(QString::number(left.left())));
    QVERIFY2(left.top() >= 2.0 * 0.86 - 0.05 && left.top() < 2.0 * 0.86 + 0.3, qPrintable(QString::number(left.top())));
    QVERIFY2(qAbs(centred.center().x() - 10.5 * 0.86) < 0.15, qPrintable(QString::number(centred.center().x())));
    QVERIFY(right.right() <= 19.5 * 0.86 && right.right() > 19.5 * 0.86 - 0.25);
    const double letter = left.width() / leftText.size();
    QVERIFY2(qAbs(letter - 0.86 * 12 / pointsPerCm) < 0.03, qPrintable(QString::number(letter)));
}

void TestPrintout::onlyTheWordProcessorPrints()
{
    int beeps = 0;
    connect(m_applet, &Applet::beeped, this, [&] { ++beeps; });
    m_record = Database::NewDocument(Database::BlankTemplate);
    m_applet->setRecord(&m_record);
    m_applet->setDocument(11);
    const QString file = m_folder.filePath(QStringLiteral("screen.pdf"));
    m_host->printing()->setPrinter(std::make_unique<PrinterDevice>(file));
    QCOMPARE(m_applet->Printout(), false);
    QCOMPARE(beeps, 1);
    QVERIFY(!QFile::exists(file));

    m_applet->setDocument(10);
    QCOMPARE(m_applet->Printout(), true);
    QCOMPARE(beeps, 1);
    // An empty document still gives its one sheet, and no blank one after it.
    QCOMPARE(PdfReadBack::pageCount(file), 1);
}

void TestPrintout::withoutAnyPrinterNothingIsPrinted()
{
    int beeps = 0;
    connect(m_applet, &Applet::beeped, this, [&] { ++beeps; });
    open(Database::NewDocument(Database::BlankTemplate));
    writeSampleText();
    QCOMPARE(m_applet->Printout(), false);
    QCOMPARE(beeps, 0);
    QVERIFY(!m_host->printing()->printer());
    // The document is untouched and can still be printed once a printer is there.
    QVERIFY(!printToPdf(QStringLiteral("later.pdf")).isEmpty());
}

QTEST_MAIN(TestPrintout)
#include "test_printout.moc"
