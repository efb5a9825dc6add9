// The page of the word-processor applet fits the width of its view: at 100 %
// no line runs past the right edge, whatever the screen. The document's zoom,
// its boxes' places and its rich text stay as they are.
#include "documents/PageSheet.h"
#include "documents/RichTextCodec.h"
#include "documents/WordProcessor.h"
#include "support/WordProcessorHost.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBlock>
#include <QtTest>

#include <memory>

namespace {

// The room beside the page: the vertical bar is always counted in.
constexpr int BarWidth = 28;
constexpr int Height = 600;

} // namespace

class TestPageFit : public QObject
{
    Q_OBJECT

    std::unique_ptr<WordProcessorHost> m_fixture;
    DatabaseApplet *m_applet = nullptr;

    WordProcessor *firstBox() const { return m_applet->WordProcessors(1); }
    QScrollArea *area() const { return m_applet->findChild<QScrollArea *>(); }
    QWidget *paper() const { return m_applet->sheet()->paper(); }
    int pageWidth() const { return m_applet->pageSize().width(); }

    // What the screen shows of the page, its first box and letters, and the grid.
    QString shown() const
    {
        QString shown;
        QDebug(&shown) << paper()->size() << firstBox()->geometry() << firstBox()->font() << firstBox()->textZoom()
                       << m_applet->SpreadSheets(2)->geometry();
        return shown;
    }

    void setZoom(int zoom) { m_applet->setProperties(QStringLiteral("Zoom"), zoom); }

    // A blank page, a grid beside its text box, and one centred line that
    // fills the box from edge to edge, in a new window of that width.
    void open(int width = 1100)
    {
        m_fixture = std::make_unique<WordProcessorHost>();
        m_applet = m_fixture->applet;
        m_applet->resize(width, Height);
        m_fixture->host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_fixture->host));
        m_fixture->open(WordProcessorHost::withBoxes({WordProcessorHost::box(DocumentItem::Grid, 2, 20, 10, 5)}));
        QTextCursor cursor(firstBox()->document());
        QTextBlockFormat centred;
        centred.setAlignment(Qt::AlignHCenter);
        cursor.setBlockFormat(centred);
        cursor.insertText(QString(40, QChar(0x3042)));
    }

private slots:
    void init() { open(); }

    void cleanup() { m_fixture.reset(); }

    // Widths of the applet around the one that just holds the page: the
    // page, its margins either side and the vertical bar.
    void pageFitsTheViewAt100_data()
    {
        QTest::addColumn<int>("extra"); // the applet's width beyond the page, its margins and the bar
        QTest::newRow("a 1024 x 768 screen's view") << -270;
        QTest::newRow("a pixel short") << -1;
        QTest::newRow("just wide enough") << 0;
        QTest::newRow("wider") << 200;
    }

    void pageFitsTheViewAt100()
    {
        QFETCH(int, extra);
        const DocumentItem stored = m_fixture->record.page(1).item(1);
        const QString savedUnfitted = RichTextCodec::write(firstBox()->document());
        const int width = pageWidth() + 2 * PageSheet::Margin + BarWidth + extra;
        m_applet->resize(width, Height);

        // Shrunk to the room left, never grown past the page's own width, centred.
        const int expected = qMin(pageWidth(), pageWidth() + extra);
        QVERIFY2(qAbs(paper()->width() - expected) <= 1, qPrintable(QString::number(paper()->width())));
        QVERIFY(paper()->width() <= pageWidth());
        QVERIFY(paper()->width() <= area()->viewport()->width());
        QCOMPARE(area()->horizontalScrollBar()->maximum(), 0);
        const int left = paper()->mapTo(area()->viewport(), QPoint(0, 0)).x();
        const int right = area()->viewport()->width() - left - paper()->width();
        QVERIFY2(qAbs(left - right) <= 1, qPrintable(QStringLiteral("%1 | %2").arg(left).arg(right)));
        QVERIFY(qAbs(double(paper()->height()) / paper()->width() - double(m_applet->pageSize().height()) / pageWidth()) < 0.01);

        // Every character of the centred line lies inside the view.
        const QTextBlock line = firstBox()->document()->firstBlock();
        const QRectF bounds = firstBox()->document()->documentLayout()->blockBoundingRect(line);
        const QTextLine first = line.layout()->lineAt(0);
        QVERIFY(first.isValid());
        const auto inView = [&](qreal x) { return firstBox()->viewport()->mapTo(area()->viewport(), QPointF(bounds.x() + x, 0).toPoint()).x(); };
        const int lineLeft = inView(first.x());
        const int lineRight = inView(first.x() + first.naturalTextWidth());
        QVERIFY2(lineLeft >= 0 && lineRight <= area()->viewport()->width(),
                 qPrintable(QStringLiteral("%1..%2 in %3").arg(lineLeft).arg(lineRight).arg(area()->viewport()->width())));
        QVERIFY(firstBox()->geometry().right() < paper()->width());

        // The user's zoom is the document's, fitted or not; 200 % is twice 100 %.
        QCOMPARE(m_fixture->record.Zoom, 100);
        const int at100 = paper()->width();
        const int boxAt100 = firstBox()->width();
        setZoom(200);
        QCOMPARE(m_fixture->record.Zoom, 200);
        QVERIFY2(qAbs(paper()->width() - 2 * at100) <= 2, qPrintable(QString::number(paper()->width())));
        QVERIFY2(qAbs(firstBox()->width() - 2 * boxAt100) <= 2, qPrintable(QString::number(firstBox()->width())));
        setZoom(100);
        QCOMPARE(paper()->width(), at100);

        // The boxes' places in the document are the 100 % ones; the saved rich text is the same.
        const DocumentItem now = m_fixture->record.page(1).item(1);
        QCOMPARE(std::tuple(now.Left, now.Top, now.Width, now.Height), std::tuple(stored.Left, stored.Top, stored.Width, stored.Height));
        QCOMPARE(RichTextCodec::write(firstBox()->document()), savedUnfitted);
    }

    // Zoom steps taken in a narrow view, then the view shrunk and widened again
    // and again, end exactly as the same steps do in a wide view: the steps keep
    // their own rounding (150 % is undone by 67 %) and resizing never drifts.
    void narrowViewsAndResizingEndAsAWideView_data()
    {
        QTest::addColumn<QList<int>>("zooms");
        QTest::newRow("100 %") << QList<int>{100};
        QTest::newRow("150 %") << QList<int>{150};
        QTest::newRow("75 %") << QList<int>{75};
        QTest::newRow("150, back to 100") << QList<int>{150, 100};
        QTest::newRow("200, 75, 125") << QList<int>{200, 75, 125};
    }

    void narrowViewsAndResizingEndAsAWideView()
    {
        QFETCH(QList<int>, zooms);
        for (int zoom : zooms)
            setZoom(zoom);
        const QString wide = shown();
        const int widePaper = paper()->width();

        // Opened anew in a narrow view: fitted at once.
        open(640);
        QVERIFY(paper()->width() <= area()->viewport()->width());
        QVERIFY(firstBox()->geometry().right() < paper()->width());
        for (int zoom : zooms)
            setZoom(zoom);
        for (int width : {900, 701, 1100, 555, 833, 620, 1024, 613, 870, 777})
            m_applet->resize(width, Height);
        QVERIFY(paper()->width() < widePaper);
        m_applet->resize(1100, Height);
        QCOMPARE(shown(), wide);
        QCOMPARE(m_fixture->record.Zoom, zooms.last());
    }
};

QTEST_MAIN(TestPageFit)
#include "test_page_fit.moc"
