// The word-processor applet driven as the user drives it: clicks, keys, the
// input method, pasting, and the main window's side-bar calls.
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "documents/PageSheet.h"
#include "documents/WordProcessor.h"
#include "platform/vb/VbDateFormat.h"
#include "support/AppletTestHost.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

namespace {

DocumentItem box(qint32 kind, float left, float top, float width, float height)
{
    DocumentItem item;
    item.Unit = 0;
    item.Left = left;
    item.Top = top;
    item.Width = width;
    item.Height = height;
    item.Kind = kind;
    return item;
}

// The blank document: one A4 page with one rich-text box in its writing area.
DocumentRecord blankRecord()
{
    return Database::NewDocument(Database::BlankTemplate);
}

// Every character's format in the box, for checks run over the whole text.
QList<QTextCharFormat> formatsOf(QTextDocument *document)
{
    QList<QTextCharFormat> formats;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it)
            formats.append(it.fragment().charFormat());
    }
    return formats;
}

} // namespace

class TestDatabaseApplet : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void documentPlacesTheBoxesInCentimetres();
    void fontSizeFormatsTheWholeParagraphAtTheCaret();
    void alignmentAndBulletFollowTheSelection();
    void timestampReplacesTheSelection();
    void timestampDoesNothingInAGrid();
    void typedColourAndUnderlineDoNotSurvive();
    void pastedHtmlArrivesPlain();
    void pastedRtfArrivesPlain();
    void recordHoldsWhatTheScreenShows();
    void revertedRecordIsNotOverwrittenByTheScreen();
    void thePageScrollsToTheCaret();
    void japaneseFromTheInputMethodReachesTheRecord();
    void zoomThereAndBackLeavesEveryControlInPlace();
    void zoomUndoesTheOldZoomWithARoundedPercentage();
    void unknownNamesDoNothing();
    void printoutBeepsOnlyOutsideTheWordProcessor();
    void startQuitAndTheEditingViewRaiseTheirEvents();
    void keysOnTheBoxesReachTheHostFirst();

private:
    void open(const DocumentRecord &record);
    WordProcessor *firstBox() const { return m_applet->WordProcessors(1); }
    void clickInto(QWidget *box);

    AppletTestHost *m_host = nullptr;
    DatabaseApplet *m_applet = nullptr;
    DocumentRecord m_record;
    int m_allPropertiesEvents = 0;
    QList<bool> m_wordProcessorEvents;
};

void TestDatabaseApplet::init()
{
    m_host = new AppletTestHost;
    m_applet = new DatabaseApplet(m_host);
    m_applet->setGeometry(0, 0, 1100, 880);
    m_allPropertiesEvents = 0;
    m_wordProcessorEvents.clear();
    connect(m_applet, &Applet::propertiesChanged, this, [this](bool &value, QVariant applet, QString kind) {
        QCOMPARE(applet.value<QObject *>(), m_applet);
        if (kind == QLatin1String("All Properties"))
            ++m_allPropertiesEvents;
        else if (kind == QLatin1String("Word Processor"))
            m_wordProcessorEvents.append(value);
    });
    m_host->show();
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host));
    m_applet->Load();
    m_applet->Reload();
}

void TestDatabaseApplet::cleanup()
{
    delete m_host;
    m_host = nullptr;
    m_applet = nullptr;
}

void TestDatabaseApplet::open(const DocumentRecord &record)
{
    m_record = record;
    m_applet->setRecord(&m_record);
    m_applet->setDocument(10);
    m_applet->Start();
}

void TestDatabaseApplet::clickInto(QWidget *box)
{
    auto *edit = qobject_cast<QAbstractScrollArea *>(box);
    QWidget *target = edit ? edit->viewport() : box;
    QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(10, 10));
    QTRY_COMPARE(m_applet->ActiveCtrl(), box);
}

void TestDatabaseApplet::documentPlacesTheBoxesInCentimetres()
{
    if (m_applet->logicalDpiX() != 96 || m_applet->logicalDpiY() != 96)
        QSKIP("the pixel figures below are for a 96 dpi screen");
    DocumentRecord record = blankRecord();
    record.Pages[0].ItemCount = 3;
    record.Pages[0].Items.append(box(DocumentItem::Grid, 2.54f, 5.08f, 10.0f, 5.0f));
    record.Pages[0].Items.append(box(7, 1, 1, 1, 1));
    open(record);

    // 1.5 cm = 56.7 px, 2.0 cm = 75.6 px, 18.0 cm = 680.3 px, 25.7 cm = 971.3 px.
    QCOMPARE(firstBox()->geometry(), QRect(57, 76, 680, 971));
    QVERIFY(firstBox()->isVisible());
    // Box 2 is a grid: its element carries the box's number; kind 7 is not shown.
    QVERIFY(m_applet->SpreadSheets(2));
    QCOMPARE(m_applet->SpreadSheets(2)->geometry(), QRect(96, 192, 378, 189));
    QCOMPARE(m_applet->WordProcessors(2), nullptr);
    QCOMPARE(m_applet->WordProcessors(3), nullptr);
    QCOMPARE(m_applet->SpreadSheets(3), nullptr);
    // The patterns stay hidden.
    QVERIFY(!m_applet->WordProcessors(0)->isVisible());
    QVERIFY(!m_applet->SpreadSheets(0)->isVisible());

    // The paper is A4 when no printer is installed: 21.0 x 29.7 cm.
    QCOMPARE(m_applet->sheet()->paper()->size(), QSize(794, 1123));
    QCOMPARE(m_applet->Properties(QStringLiteral("Zoom")), QVariant::fromValue<qint16>(100));

    // Leaving the word processor closes the boxes it showed.
    m_applet->setDocument(0);
    QCOMPARE(m_applet->WordProcessors(1), nullptr);
    QCOMPARE(m_applet->SpreadSheets(2), nullptr);
    QCOMPARE(m_applet->AllCtrls().size(), 2);
}

void TestDatabaseApplet::fontSizeFormatsTheWholeParagraphAtTheCaret()
{
    struct Case
    {
        const char *name;
        int paragraph;   // where the caret is put
        int caretOffset; // characters into that paragraph
    };
    const Case cases[] = {{"first", 0, 3}, {"middle", 1, 0}, {"last", 2, 4}};
    for (const Case &c : cases) {
        open(blankRecord());
        WordProcessor *box = firstBox();
        clickInto(box);
        QTest::keyClicks(box, QStringLiteral("first line"));
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClicks(box, QStringLiteral("middle line"));
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClicks(box, QStringLiteral("last line"));

        const QTextBlock target = box->document()->findBlockByNumber(c.paragraph);
        QTextCursor caret = box->textCursor();
        caret.setPosition(target.position() + c.caretOffset);
        box->setTextCursor(caret);
        const double before = box->selFontSize().toDouble();
        m_allPropertiesEvents = 0;

        m_applet->setProperties(QStringLiteral("Font Size"), 24);

        for (QTextBlock block = box->document()->begin(); block.isValid(); block = block.next()) {
            const bool inside = block.blockNumber() == c.paragraph;
            for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
                const double size = it.fragment().charFormat().fontPointSize();
                if (inside)
                    QVERIFY2(size == 24, c.name);
                else
                    QVERIFY2(size == 0 || size == before, c.name);
            }
        }
        // The caret ends at the paragraph's start with nothing selected.
        QCOMPARE(box->textCursor().position(), target.position());
        QVERIFY(!box->textCursor().hasSelection());
        QCOMPARE(m_applet->Properties(QStringLiteral("Font Size")).toDouble(), 24.0);
        QCOMPARE(m_allPropertiesEvents, 1);
        // Typed text at the caret takes the paragraph's size.
        QTest::keyClicks(box, QStringLiteral("x"));
        QCOMPARE(box->document()->findBlockByNumber(c.paragraph).begin().fragment().charFormat().fontPointSize(), 24.0);
        m_applet->setDocument(0);
    }
}

void TestDatabaseApplet::alignmentAndBulletFollowTheSelection()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("one"));
    QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClicks(box, QStringLiteral("two"));

    m_allPropertiesEvents = 0;
    m_applet->setProperties(QStringLiteral("Alignment"), 2);
    QCOMPARE(m_applet->Properties(QStringLiteral("Alignment")).toInt(), 2);
    QVERIFY(box->document()->findBlockByNumber(1).blockFormat().alignment() & Qt::AlignHCenter);
    m_applet->setProperties(QStringLiteral("Alignment"), 1);
    QCOMPARE(m_applet->Properties(QStringLiteral("Alignment")).toInt(), 1);
    QVERIFY(box->document()->findBlockByNumber(1).blockFormat().alignment() & Qt::AlignRight);
    // The first paragraph was never touched.
    QCOMPARE(box->document()->findBlockByNumber(0).blockFormat().alignment() & (Qt::AlignRight | Qt::AlignHCenter),
             Qt::Alignment());

    QCOMPARE(m_applet->Properties(QStringLiteral("Bullet")).toBool(), false);
    box->selectAll();
    m_applet->setProperties(QStringLiteral("Bullet"), true);
    QCOMPARE(m_applet->Properties(QStringLiteral("Bullet")).toBool(), true);
    for (QTextBlock block = box->document()->begin(); block.isValid(); block = block.next()) {
        QVERIFY(block.textList());
        QCOMPARE(block.textList()->format().style(), QTextListFormat::ListDisc);
    }
    m_applet->setProperties(QStringLiteral("Bullet"), false);
    QCOMPARE(m_applet->Properties(QStringLiteral("Bullet")).toBool(), false);
    QCOMPARE(box->document()->findBlockByNumber(1).textList(), nullptr);
    QCOMPARE(m_allPropertiesEvents, 4);
}

void TestDatabaseApplet::timestampReplacesTheSelection()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("Date: XXX."));
    const QString today = VbDateFormat::format(QDateTime::currentDateTime(), QStringLiteral("ggge年m月d日 aaaa"));
    QVERIFY(QRegularExpression(QStringLiteral("^\\p{Han}{2}\\d+年\\d{1,2}月\\d{1,2}日 [月火水木金土日]曜日$"))
                .match(today).hasMatch());

    // Without a selection the date goes in at the caret.
    QTextCursor caret = box->textCursor();
    caret.setPosition(6);
    box->setTextCursor(caret);
    QCOMPARE(m_applet->Update(QStringLiteral("Timestamp")), QVariant());
    QCOMPARE(box->toPlainText(), QStringLiteral("Date: ") + today + QStringLiteral("XXX."));

    // With one it replaces the selection.
    caret.setPosition(6 + today.size());
    caret.setPosition(6 + today.size() + 3, QTextCursor::KeepAnchor);
    box->setTextCursor(caret);
    m_applet->Update(QStringLiteral("Timestamp"));
    QCOMPARE(box->toPlainText(), QStringLiteral("Date: ") + today + today + QStringLiteral("."));
}

void TestDatabaseApplet::timestampDoesNothingInAGrid()
{
    DocumentRecord record = blankRecord();
    record.Pages[0].ItemCount = 2;
    record.Pages[0].Items.append(box(DocumentItem::Grid, 2, 3, 10, 5));
    open(record);
    clickInto(firstBox());
    QTest::keyClicks(firstBox(), QStringLiteral("text"));
    QTableWidget *grid = m_applet->SpreadSheets(2);
    grid->setFocus();
    QCOMPARE(m_applet->ActiveCtrl(), grid);

    m_applet->Update(QStringLiteral("Timestamp"));
    QCOMPARE(firstBox()->toPlainText(), QStringLiteral("text"));
    for (int row = 0; row < grid->rowCount(); ++row) {
        for (int column = 0; column < grid->columnCount(); ++column)
            QVERIFY(!grid->item(row, column));
    }
    // Nor do the formatting properties answer for a grid.
    QVERIFY(!m_applet->Properties(QStringLiteral("Font Size")).isValid());
    m_allPropertiesEvents = 0;
    m_applet->setProperties(QStringLiteral("Alignment"), 2);
    QCOMPARE(m_allPropertiesEvents, 0);
}

void TestDatabaseApplet::typedColourAndUnderlineDoNotSurvive()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("plain "));
    box->setTextColor(Qt::red);
    box->setFontUnderline(true);
    QTest::keyClicks(box, QStringLiteral("coloured"));
    QCOMPARE(box->textCursor().position(), 14);

    QTRY_VERIFY(!formatsOf(box->document()).isEmpty());
    QTRY_VERIFY([&] {
        for (const QTextCharFormat &format : formatsOf(box->document())) {
            if (format.hasProperty(QTextFormat::ForegroundBrush) || format.fontUnderline())
                return false;
        }
        return true;
    }());
    QCOMPARE(box->toPlainText(), QStringLiteral("plain coloured"));
    QCOMPARE(box->textCursor().position(), 14);
}

void TestDatabaseApplet::pastedHtmlArrivesPlain()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("ab"));
    QTest::keyClick(box, Qt::Key_Left);

    auto *mime = new QMimeData;
    mime->setHtml(QStringLiteral("<p><span style=\"color:#ff0000\">red</span> <u>under</u> "
                                 "<a href=\"https://example.org\">link</a>"
                                 " <span style=\"background:yellow\">marked</span></p>"));
    mime->setText(QStringLiteral("red under link marked"));
    QApplication::clipboard()->setMimeData(mime);
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(box->toPlainText(), QStringLiteral("ared under link markedb"));
    QCOMPARE(box->textCursor().position(), 22);
    for (const QTextCharFormat &format : formatsOf(box->document())) {
        QVERIFY(!format.hasProperty(QTextFormat::ForegroundBrush));
        QVERIFY(!format.hasProperty(QTextFormat::BackgroundBrush));
        QVERIFY(!format.fontUnderline());
    }
    const QString rtf = m_applet->record()->page(1).item(1).Text;
    QVERIFY(!rtf.contains(QLatin1String("\\colortbl")));
    QVERIFY(!rtf.contains(QLatin1String("\\ul")));
}

void TestDatabaseApplet::pastedRtfArrivesPlain()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("[]"));
    QTest::keyClick(box, Qt::Key_Left);

    auto *mime = new QMimeData;
    mime->setData(QStringLiteral("text/rtf"),
                  QByteArrayLiteral("{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}"
                                    "{\\colortbl ;\\red255\\green0\\blue0;}"
                                    "\\f0\\fs24 \\cf1 red\\cf0  \\ul under\\ulnone  \\'93\\'fa\\par}"));
    QApplication::clipboard()->setMimeData(mime);
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);

    QVERIFY2(box->toPlainText().startsWith(QStringLiteral("[red under 日")), qPrintable(box->toPlainText()));
    QVERIFY(box->toPlainText().endsWith(QLatin1Char(']')));
    QCOMPARE(box->textCursor().position(), box->document()->characterCount() - 2);
    for (const QTextCharFormat &format : formatsOf(box->document())) {
        QVERIFY(!format.hasProperty(QTextFormat::ForegroundBrush));
        QVERIFY(!format.fontUnderline());
    }
    const QString rtf = m_applet->record()->page(1).item(1).Text;
    QVERIFY(!rtf.contains(QLatin1String("\\colortbl")));
    QVERIFY(!rtf.contains(QLatin1String("\\ul")));
}

void TestDatabaseApplet::recordHoldsWhatTheScreenShows()
{
    DocumentRecord record = blankRecord();
    record.Pages[0].Items[0].Text = QStringLiteral("{\\rtf1\\ansi keep\\par}");
    open(record);
    WordProcessor *box = firstBox();
    QCOMPARE(box->toPlainText(), QStringLiteral("keep"));
    // Showing the text is no change of it: the record keeps its source.
    QCOMPARE(m_applet->record()->page(1).item(1).Text, QStringLiteral("{\\rtf1\\ansi keep\\par}"));

    clickInto(box);
    QTest::keyClick(box, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(box, QStringLiteral("sake"));
    // Read at once, without the event loop turning.
    QVERIFY(m_applet->record()->page(1).item(1).Text.contains(QLatin1String("keepsake")));

    // A pause in typing writes it too, for readers holding the record itself.
    QTest::keyClicks(box, QStringLiteral("s"));
    QTRY_VERIFY_WITH_TIMEOUT(m_record.page(1).item(1).Text.contains(QLatin1String("keepsakes")), 3000);

    // And closing the page does.
    QTest::keyClicks(box, QStringLiteral("!"));
    m_applet->setDocument(0);
    QVERIFY(m_record.page(1).item(1).Text.contains(QLatin1String("keepsakes!")));
}

void TestDatabaseApplet::revertedRecordIsNotOverwrittenByTheScreen()
{
    DocumentRecord record = blankRecord();
    record.page(1).item(1).Text = QStringLiteral("{\\rtf1\\ansi saved\\par}");
    open(record);
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClick(box, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(box, QStringLiteral(" and edited"));

    // The host reverts: the stored document goes back into the same record,
    // then the view is closed (saving) and opened again.
    m_record = record;
    m_applet->setRecord(&m_record);
    QCOMPARE(firstBox()->toPlainText(), QStringLiteral("saved"));
    m_applet->setDocument(0);
    QCOMPARE(m_record.page(1).item(1).Text, QStringLiteral("{\\rtf1\\ansi saved\\par}"));

    // Even a host that does not say so keeps its reverted text.
    open(record);
    clickInto(firstBox());
    QTest::keyClicks(firstBox(), QStringLiteral("more "));
    m_record.page(1).item(1).Text = QStringLiteral("{\\rtf1\\ansi other\\par}");
    m_applet->setDocument(0);
    QCOMPARE(m_record.page(1).item(1).Text, QStringLiteral("{\\rtf1\\ansi other\\par}"));
}

void TestDatabaseApplet::thePageScrollsToTheCaret()
{
    m_applet->resize(900, 500);
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    auto *area = m_applet->findChild<QScrollArea *>();
    QVERIFY(area);
    QCOMPARE(area->verticalScrollBar()->value(), 0);
    for (int line = 0; line < 30; ++line)
        QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClicks(box, QStringLiteral("bottom"));
    // The caret's line is inside the visible part of the page.
    const QPoint caret = box->viewport()->mapTo(area->viewport(), box->cursorRect().center());
    QVERIFY(area->verticalScrollBar()->value() > 0);
    QVERIFY2(area->viewport()->rect().contains(caret), qPrintable(QStringLiteral("%1,%2").arg(caret.x()).arg(caret.y())));
}

void TestDatabaseApplet::japaneseFromTheInputMethodReachesTheRecord()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QInputMethodEvent composing(QStringLiteral("にほんご"), {});
    QApplication::sendEvent(box, &composing);
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("日本語"));
    QApplication::sendEvent(box, &committed);
    QCOMPARE(box->toPlainText(), QStringLiteral("日本語"));

    // Code page 932: 日 93FA, 本 967B, 語 8CEA.
    const QString rtf = m_applet->record()->page(1).item(1).Text.toLower();
    QVERIFY2(rtf.contains(QLatin1String("\\'93\\'fa\\'96\\'7b\\'8c\\'ea")), qPrintable(rtf));
    QVERIFY(rtf.contains(QLatin1String("\\ansicpg932")));
}

void TestDatabaseApplet::zoomThereAndBackLeavesEveryControlInPlace()
{
    DocumentRecord record = blankRecord();
    record.Pages[0].ItemCount = 3;
    record.Pages[0].Items.append(box(DocumentItem::Grid, 2.3f, 7.7f, 9.9f, 3.3f));
    record.Pages[0].Items.append(box(DocumentItem::RichText, 1.1f, 20.3f, 13.7f, 1.3f));
    open(record);
    firstBox()->setPlainText(QStringLiteral("文字の大きさ"));
    const QTextBlock line = firstBox()->document()->firstBlock();
    const double lineHeight = firstBox()->document()->documentLayout()->blockBoundingRect(line).height();
    QList<QRect> before;
    const QList<QWidget *> controls = m_applet->AllCtrls();
    QCOMPARE(controls.size(), 5); // two patterns and three boxes
    for (QWidget *control : controls)
        before.append(control->geometry());
    const QSize paper = m_applet->sheet()->paper()->size();

    m_applet->setProperties(QStringLiteral("Zoom"), 200);
    QCOMPARE(m_record.Zoom, 200);
    QCOMPARE(m_applet->sheet()->paper()->size(), paper * 2);
    for (int i = 0; i < controls.size(); ++i)
        QCOMPARE(controls[i]->geometry(), QRect(before[i].topLeft() * 2, before[i].size() * 2));
    // The letters grow with the page.
    QCOMPARE(firstBox()->textZoom(), 200);
    const double zoomedHeight = firstBox()->document()->documentLayout()->blockBoundingRect(line).height();
    QVERIFY2(qAbs(zoomedHeight / lineHeight - 2.0) < 0.15, qPrintable(QString::number(zoomedHeight / lineHeight)));
    if (qEnvironmentVariableIsSet("LANTERN_SCREENSHOT"))
        m_host->grab().save(qEnvironmentVariable("LANTERN_SCREENSHOT"));

    m_applet->setProperties(QStringLiteral("Zoom"), 100);
    QCOMPARE(m_applet->sheet()->paper()->size(), paper);
    for (int i = 0; i < controls.size(); ++i)
        QCOMPARE(controls[i]->geometry(), before[i]);
    QCOMPARE(firstBox()->textZoom(), 100);

    // The whole page can be scrolled to at 200 %.
    m_applet->setProperties(QStringLiteral("Zoom"), 200);
    QVERIFY(m_applet->sheet()->height() > m_applet->height());
    QCOMPARE(m_applet->sheet()->height(), paper.height() * 2 + 2 * PageSheet::Margin);
}

void TestDatabaseApplet::zoomUndoesTheOldZoomWithARoundedPercentage()
{
    if (m_applet->logicalDpiX() != 96)
        QSKIP("the pixel figures below are for a 96 dpi screen");
    open(blankRecord());
    QCOMPARE(firstBox()->geometry(), QRect(57, 76, 680, 971));

    m_applet->setProperties(QStringLiteral("Zoom"), 150);
    // The applet's own zoom answers 100 until the next Document.
    QCOMPARE(m_applet->Properties(QStringLiteral("Zoom")).toInt(), 100);
    QCOMPARE(m_record.Zoom, 150);
    QCOMPARE(firstBox()->geometry(), QRect(86, 114, 1020, 1457));

    // Back by 67 (100 / 150 x 100 = 66.67), then by 100: 86 x 0.67 = 57.62.
    m_applet->setProperties(QStringLiteral("Zoom"), 100);
    QCOMPARE(firstBox()->geometry(), QRect(58, 76, 683, 976));
    QCOMPARE(m_record.Zoom, 100);
    QCOMPARE(m_applet->Properties(QStringLiteral("Zoom")).toInt(), 100);
}

void TestDatabaseApplet::unknownNamesDoNothing()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    clickInto(box);
    QTest::keyClicks(box, QStringLiteral("same"));
    const QString source = m_applet->record()->page(1).item(1).Text;
    m_allPropertiesEvents = 0;

    for (const QString &name : {QStringLiteral("Colour"), QStringLiteral("zoom"), QStringLiteral("FontSize"), QString()}) {
        QVERIFY(!m_applet->Properties(name).isValid());
        m_applet->setProperties(name, 48);
        m_applet->setPropertiesObject(name, box);
        QVERIFY(!m_applet->Update(name).isValid());
    }
    QCOMPARE(m_allPropertiesEvents, 0);
    QCOMPARE(m_record.Zoom, 100);
    QCOMPARE(box->toPlainText(), QStringLiteral("same"));
    QCOMPARE(m_applet->record()->page(1).item(1).Text, source);
}

void TestDatabaseApplet::printoutBeepsOnlyOutsideTheWordProcessor()
{
    int beeps = 0;
    connect(m_applet, &Applet::beeped, this, [&] { ++beeps; });
    m_applet->setDocument(0);
    QCOMPARE(m_applet->Printout(), false);
    QCOMPARE(beeps, 1);
    open(blankRecord());
    m_applet->Printout();
    QCOMPARE(beeps, 1);
}

void TestDatabaseApplet::startQuitAndTheEditingViewRaiseTheirEvents()
{
    QList<bool> firstEvents;
    connect(m_applet, &Applet::started, this, [&](bool &active) { firstEvents.append(active); });
    open(blankRecord()); // Document 10, then Start
    m_applet->Quit();
    QCOMPARE(firstEvents, QList<bool>({true, false}));
    m_applet->setDocument(0);
    QCOMPARE(m_wordProcessorEvents, QList<bool>({true, false}));
    // Kinds other than the word processor say nothing about the editing view.
    m_applet->setDocument(11);
    QCOMPARE(m_applet->size(), QSize(800, 600));
    QCOMPARE(m_wordProcessorEvents.size(), 2);
}

void TestDatabaseApplet::keysOnTheBoxesReachTheHostFirst()
{
    open(blankRecord());
    WordProcessor *box = firstBox();
    QList<qint32> codes;
    bool allow = true;
    connect(m_applet, &Applet::keyOrPointer, this, [&](qint32 &code, bool &proceed) {
        QCOMPARE(proceed, true);
        codes.append(code);
        proceed = allow;
    });
    clickInto(box);
    QTest::keyClick(box, Qt::Key_A);
    QCOMPARE(codes, QList<qint32>({qint32(Qt::LeftButton), qint32(Qt::Key_A)}));
    QCOMPARE(box->toPlainText(), QStringLiteral("a"));
    // The host cancels: the key does not arrive.
    allow = false;
    QTest::keyClick(box, Qt::Key_B);
    QCOMPARE(box->toPlainText(), QStringLiteral("a"));
}

QTEST_MAIN(TestDatabaseApplet)
#include "test_databaseapplet.moc"
