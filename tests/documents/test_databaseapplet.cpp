// The word-processor applet driven as the user drives it: clicks, keys, the
// input method, pasting, and the main window's side-bar calls.
#include "documents/PageSheet.h"
#include "documents/WordProcessor.h"
#include "platform/vb/VbDateFormat.h"
#include "support/WordProcessorHost.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextList>
#include <QtTest>

#include <memory>

namespace {

using Host = WordProcessorHost;

// Whether no character of the box is coloured, marked or underlined.
bool allPlain(QTextDocument *document)
{
    const QString html = document->toHtml();
    return !html.contains(QLatin1String("color:")) && !html.contains(QLatin1String("underline"));
}

} // namespace

class TestDatabaseApplet : public QObject
{
    Q_OBJECT

    std::unique_ptr<WordProcessorHost> m_fixture;
    DatabaseApplet *m_applet = nullptr;
    int m_allPropertiesEvents = 0;
    QList<bool> m_wordProcessorEvents;

    WordProcessor *firstBox() const { return m_applet->WordProcessors(1); }
    QString firstText() const { return m_fixture->record.page(1).item(1).Text; }
    void open(const DocumentRecord &record = Database::NewDocument(Database::BlankTemplate)) { m_fixture->open(record); }

    void clickInto(WordProcessor *box)
    {
        QTest::mouseClick(box->viewport(), Qt::LeftButton, {}, QPoint(10, 10));
        QTRY_COMPARE(m_applet->ActiveCtrl(), box);
    }

    // Opens the document, clicks into its first box and types the text there,
    // a line feed as the Return key.
    WordProcessor *typeInto(const QString &text, const DocumentRecord &record = Database::NewDocument(Database::BlankTemplate))
    {
        open(record);
        clickInto(firstBox());
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0)
                QTest::keyClick(firstBox(), Qt::Key_Return);
            QTest::keyClicks(firstBox(), lines[i]);
        }
        return firstBox();
    }

    static void select(WordProcessor *box, int from, int to)
    {
        QTextCursor cursor = box->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
    }

private slots:
    void init()
    {
        m_fixture = std::make_unique<WordProcessorHost>();
        m_applet = m_fixture->applet;
        m_allPropertiesEvents = 0;
        m_wordProcessorEvents.clear();
        connect(m_applet, &Applet::propertiesChanged, this, [this](bool &value, QVariant applet, QString kind) {
            QCOMPARE(applet.value<QObject *>(), m_applet);
            if (kind == QLatin1String("All Properties"))
                ++m_allPropertiesEvents;
            else if (kind == QLatin1String("Word Processor"))
                m_wordProcessorEvents.append(value);
        });
        QVERIFY(m_fixture->showActive());
    }

    void cleanup() { m_fixture.reset(); }

    void fontSizeFormatsTheWholeParagraphAtTheCaret_data()
    {
        QTest::addColumn<int>("paragraph");
        QTest::addColumn<int>("offset"); // characters into that paragraph
        QTest::newRow("first") << 0 << 3;
        QTest::newRow("middle, at its start") << 1 << 0;
        QTest::newRow("last, no line end after it") << 2 << 4;
    }

    void fontSizeFormatsTheWholeParagraphAtTheCaret()
    {
        QFETCH(int, paragraph);
        QFETCH(int, offset);
        WordProcessor *box = typeInto(QStringLiteral("first line\nmiddle line\nlast line"));
        const QTextBlock target = box->document()->findBlockByNumber(paragraph);
        select(box, target.position() + offset, target.position() + offset);
        const double before = box->selFontSize().toDouble();
        m_allPropertiesEvents = 0;

        m_applet->setProperties(QStringLiteral("Font Size"), 24);

        for (QTextBlock block = box->document()->begin(); block.isValid(); block = block.next()) {
            for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
                const double size = it.fragment().charFormat().fontPointSize();
                if (block.blockNumber() == paragraph)
                    QCOMPARE(size, 24.0);
                else
                    QVERIFY(size == 0 || size == before);
            }
        }
        // The caret ends at the paragraph's start with nothing selected.
        QCOMPARE(box->textCursor().position(), target.position());
        QVERIFY(!box->textCursor().hasSelection());
        QCOMPARE(m_applet->Properties(QStringLiteral("Font Size")).toDouble(), 24.0);
        QCOMPARE(m_allPropertiesEvents, 1);
        // Typed text at the caret takes the paragraph's size.
        QTest::keyClicks(box, QStringLiteral("x"));
        QCOMPARE(box->document()->findBlockByNumber(paragraph).begin().fragment().charFormat().fontPointSize(), 24.0);
    }

    void alignmentAndBulletFollowTheSelection()
    {
        WordProcessor *box = typeInto(QStringLiteral("one\ntwo"));
        m_allPropertiesEvents = 0;
        auto alignment = [box](int block) {
            return box->document()->findBlockByNumber(block).blockFormat().alignment() & (Qt::AlignRight | Qt::AlignHCenter);
        };
        // The caret is in the second paragraph; the first is never touched.
        for (const auto &[value, expected] : QList<QPair<int, Qt::Alignment>>{{2, Qt::AlignHCenter}, {1, Qt::AlignRight}}) {
            m_applet->setProperties(QStringLiteral("Alignment"), value);
            QCOMPARE(m_applet->Properties(QStringLiteral("Alignment")).toInt(), value);
            QCOMPARE(alignment(1), expected);
            QCOMPARE(alignment(0), Qt::Alignment());
        }

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

    void timestampReplacesTheSelection()
    {
        WordProcessor *box = typeInto(QStringLiteral("Date: XXX."));
        const QString today = VbDateFormat::format(QDateTime::currentDateTime(), QStringLiteral("ggge年m月d日 aaaa"));

        // Without a selection the date goes in at the caret; with one it replaces it.
        select(box, 6, 6);
        QCOMPARE(m_applet->Update(QStringLiteral("Timestamp")), QVariant());
        QCOMPARE(box->toPlainText(), "Date: " + today + "XXX.");
        select(box, 6 + today.size(), 6 + today.size() + 3);
        m_applet->Update(QStringLiteral("Timestamp"));
        QCOMPARE(box->toPlainText(), "Date: " + today + today + ".");
    }

    void colourAndUnderlineNeverSurvive_data()
    {
        QTest::addColumn<QString>("before"); // typed first; the caret then goes one left
        QTest::addColumn<QString>("html");   // pasted when set
        QTest::addColumn<QByteArray>("rtf"); // pasted when set
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("caret");
        // Neither html nor rtf: red underlined text typed at the end.
        QTest::newRow("typed") << "plain x" << QString() << QByteArray() << "plain colouredx" << 14;
        QTest::newRow("pasted html")
            << "ab"
            << "<p><span style=\"color:#ff0000\">red</span> <u>under</u> <a href=\"https://example.org\">link</a>"
               " <span style=\"background:yellow\">marked</span></p>"
            << QByteArray() << "ared under link markedb" << 22;
        QTest::newRow("pasted rtf")
            << "[]" << QString()
            << QByteArray("{\\rtf1\\ansi\\ansicpg932\\deff0{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}"
                          "{\\colortbl ;\\red255\\green0\\blue0;}\\f0\\fs24 \\cf1 red\\cf0  \\ul under\\ulnone  \\'93\\'fa\\par}")
            << "[red under 日]" << 12;
    }

    void colourAndUnderlineNeverSurvive()
    {
        QFETCH(QString, before);
        QFETCH(QString, html);
        QFETCH(QByteArray, rtf);
        QFETCH(QString, expected);
        QFETCH(int, caret);
        WordProcessor *box = typeInto(before);
        QTest::keyClick(box, Qt::Key_Left);
        if (html.isEmpty() && rtf.isEmpty()) {
            box->setTextColor(Qt::red);
            box->setFontUnderline(true);
            QTest::keyClicks(box, QStringLiteral("coloured"));
        } else {
            auto *mime = new QMimeData;
            if (!html.isEmpty()) {
                mime->setHtml(html);
                mime->setText(QStringLiteral("red under link marked"));
            } else {
                mime->setData(QStringLiteral("text/rtf"), rtf);
            }
            QApplication::clipboard()->setMimeData(mime);
            QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
        }

        QTRY_VERIFY(allPlain(box->document()));
        QCOMPARE(box->toPlainText(), expected);
        QCOMPARE(box->textCursor().position(), caret);
        QVERIFY(!firstText().contains(QLatin1String("\\colortbl")));
        QVERIFY(!firstText().contains(QLatin1String("\\ul")));
    }

    void recordHoldsWhatTheScreenShowsUntilTheHostReverts()
    {
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.page(1).item(1).Text = QStringLiteral("{\\rtf1\\ansi keep\\par}");
        open(record);
        WordProcessor *box = firstBox();
        QCOMPARE(box->toPlainText(), QStringLiteral("keep"));
        // Showing the text is no change of it: the record keeps its source.
        QCOMPARE(firstText(), record.page(1).item(1).Text);
        clickInto(box);
        QTest::keyClick(box, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(box, QStringLiteral("sake"));
        // Read through the applet at once, without the event loop turning.
        QVERIFY(m_applet->record()->page(1).item(1).Text.contains(QLatin1String("keepsake")));

        // The host reverts: the stored document goes back into the same record,
        // then the view is closed (saving) and opened again.
        m_fixture->record = record;
        m_applet->setRecord(&m_fixture->record);
        QCOMPARE(firstBox()->toPlainText(), QStringLiteral("keep"));
        m_applet->setDocument(0);
        QCOMPARE(firstText(), record.page(1).item(1).Text);
    }

    void thePageScrollsToTheCaret()
    {
        m_applet->resize(900, 500);
        WordProcessor *box = typeInto(QString(30, QLatin1Char('\n')) + QStringLiteral("bottom"));
        auto *area = m_applet->findChild<QScrollArea *>();
        const QPoint caret = box->viewport()->mapTo(area->viewport(), box->cursorRect().center());
        QVERIFY(area->verticalScrollBar()->value() > 0);
        QVERIFY(area->viewport()->rect().contains(caret));
    }

    // Box 1 is the blank one, box 2 a grid, box 3 of kind 7, which is not shown.
    // 150 % is undone by 67 (100 / 150 x 100 = 66.67), then scaled by 100.
    void boxesArePlacedInCentimetresAndZoomUndoesTheOldZoomRounded()
    {
        if (m_applet->logicalDpiX() != 96 || m_applet->logicalDpiY() != 96)
            QSKIP("the pixel figures below are for a 96 dpi screen");
        open(Host::withBoxes({Host::box(DocumentItem::Grid, 2.54f, 5.08f, 10, 5), Host::box(7, 1, 1, 1, 1)}));
        // 1.5 cm = 56.7 px, 2.0 cm = 75.6 px, 18.0 cm = 680.3 px, 25.7 cm = 971.3 px.
        QCOMPARE(firstBox()->geometry(), QRect(57, 76, 680, 971));
        QCOMPARE(m_applet->SpreadSheets(2)->geometry(), QRect(96, 192, 378, 189));
        QVERIFY(!m_applet->WordProcessors(2) && !m_applet->WordProcessors(3) && !m_applet->SpreadSheets(3));
        QVERIFY(firstBox()->isVisible() && !m_applet->WordProcessors(0)->isVisible() && !m_applet->SpreadSheets(0)->isVisible());
        // The paper is A4 when no printer is installed: 21.0 x 29.7 cm.
        const QSize paper = m_applet->sheet()->paper()->size();
        QCOMPARE(paper, QSize(794, 1123));
        firstBox()->setPlainText(QStringLiteral("文字の大きさ"));
        const QTextBlock line = firstBox()->document()->firstBlock();
        auto lineHeight = [&] { return firstBox()->document()->documentLayout()->blockBoundingRect(line).height(); };
        const double unzoomed = lineHeight();
        QCOMPARE(m_applet->AllCtrls().size(), 4); // two patterns and two boxes

        m_applet->setProperties(QStringLiteral("Zoom"), 150);
        QCOMPARE(m_fixture->record.Zoom, 150);
        // The applet's own zoom answers 100 until the next Document.
        QCOMPARE(m_applet->Properties(QStringLiteral("Zoom")).toInt(), 100);
        QCOMPARE(firstBox()->geometry(), QRect(86, 114, 1020, 1457));
        QCOMPARE(m_applet->sheet()->paper()->size(), QSize(1191, 1684));
        QCOMPARE(m_applet->SpreadSheets(2)->geometry(), QRect(144, 288, 567, 284));
        // The letters grow with the page, and the whole page can be scrolled to.
        QCOMPARE(firstBox()->textZoom(), 150);
        QVERIFY2(qAbs(lineHeight() / unzoomed - 1.5) < 0.15, qPrintable(QString::number(lineHeight() / unzoomed)));
        QCOMPARE(m_applet->sheet()->height(), 1684 + 2 * PageSheet::Margin);

        m_applet->setProperties(QStringLiteral("Zoom"), 100);
        QCOMPARE(m_fixture->record.Zoom, 100);
        // 86 x 0.67 = 57.62.
        QCOMPARE(firstBox()->geometry(), QRect(58, 76, 683, 976));
        QCOMPARE(m_applet->sheet()->paper()->size(), paper);
        QCOMPARE(firstBox()->textZoom(), 100);

        // Leaving the word processor closes the boxes it showed.
        m_applet->setDocument(0);
        QCOMPARE(m_applet->WordProcessors(1), nullptr);
        QCOMPARE(m_applet->SpreadSheets(2), nullptr);
        QCOMPARE(m_applet->AllCtrls().size(), 2);
    }

    // Unknown names, and the formatting names and "Timestamp" with a grid
    // active, do nothing and answer nothing.
    void onlyKnownNamesOnARichTextBoxDoAnything()
    {
        WordProcessor *box = typeInto(QStringLiteral("same"), Host::withBoxes({Host::box(DocumentItem::Grid, 2, 3, 10, 5)}));
        const QString source = firstText();
        m_allPropertiesEvents = 0;
        for (const QString &name : {QStringLiteral("Colour"), QStringLiteral("zoom"), QStringLiteral("FontSize"), QString()}) {
            QVERIFY(!m_applet->Properties(name).isValid());
            m_applet->setProperties(name, 48);
            m_applet->setPropertiesObject(name, box);
            QVERIFY(!m_applet->Update(name).isValid());
        }
        QTableWidget *grid = m_applet->SpreadSheets(2);
        grid->setFocus();
        QCOMPARE(m_applet->ActiveCtrl(), grid);
        for (const QString &name : {QStringLiteral("Font Size"), QStringLiteral("Alignment"), QStringLiteral("Bullet")}) {
            QVERIFY(!m_applet->Properties(name).isValid());
            m_applet->setProperties(name, 2);
        }
        m_applet->Update(QStringLiteral("Timestamp"));
        QCOMPARE(m_allPropertiesEvents, 0);
        QCOMPARE(m_fixture->record.Zoom, 100);
        QCOMPARE(box->toPlainText(), QStringLiteral("same"));
        QCOMPARE(firstText(), source);
        for (int row = 0; row < grid->rowCount(); ++row) {
            for (int column = 0; column < grid->columnCount(); ++column)
                QVERIFY(!grid->item(row, column));
        }
    }

    void startQuitAndTheEditingViewRaiseTheirEvents()
    {
        QList<bool> firstEvents;
        connect(m_applet, &Applet::started, this, [&](bool &active) { firstEvents.append(active); });
        open(); // Document 10, then Start
        m_applet->Quit();
        QCOMPARE(firstEvents, QList<bool>({true, false}));
        m_applet->setDocument(0);
        QCOMPARE(m_wordProcessorEvents, QList<bool>({true, false}));
        // Kinds other than the word processor say nothing about the editing view.
        m_applet->setDocument(11);
        QCOMPARE(m_wordProcessorEvents.size(), 2);
    }

    void clicksAndKeysOnTheBoxesReachTheHost()
    {
        QList<qint32> codes;
        connect(m_applet, &Applet::keyOrPointer, this, [&](qint32 &code, bool &) { codes.append(code); });
        typeInto(QStringLiteral("a"));
        QCOMPARE(codes, QList<qint32>({qint32(Qt::LeftButton), qint32(Qt::Key_A)}));
    }
};

QTEST_MAIN(TestDatabaseApplet)
#include "test_databaseapplet.moc"
