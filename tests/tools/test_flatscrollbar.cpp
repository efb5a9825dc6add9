#include "platform/FlatScrollStyle.h"
#include "tools/FlatScrollBar.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QScrollBar>
#include <QtTest>

class TestFlatScrollBar : public QObject
{
    Q_OBJECT

private slots:
    void rangePositionAndPageRoundTrip();
    void aPageCoveringTheRangeGreysTheBarOut_data();
    void aPageCoveringTheRangeGreysTheBarOut();
    void styleBitsFollowTheShownBars();
    void aPlainWindowGetsBarsAlongItsEdges();
    void initializeAndTerminateSwitchTheLook();
    void propertiesAreKept();
    void barsChangedByTheWindowAreReadBack();
};

void TestFlatScrollBar::rangePositionAndPageRoundTrip()
{
    QAbstractScrollArea area;
    area.resize(300, 200);
    FlatScrollBar bars;
    bars.SetWindow(&area);

    bars.HScrollRange(0, 500);
    bars.SetHScrollPage(100);
    bars.SetHScrollPosition(250);
    bars.VScrollRange(10, 90);
    bars.SetVScrollPage(20);
    bars.SetVScrollPosition(30);

    QCOMPARE(bars.HScrollMin(), 0);
    QCOMPARE(bars.HScrollMax(), 500);
    QCOMPARE(bars.HScrollPage(), 100);
    QCOMPARE(bars.HScrollPosition(), 250);
    QCOMPARE(bars.VScrollMin(), 10);
    QCOMPARE(bars.VScrollMax(), 90);
    QCOMPARE(bars.VScrollPage(), 20);
    QCOMPARE(bars.VScrollPosition(), 30);

    // The last position leaves one page in view: 500 - 100 + 1.
    bars.SetHScrollPosition(1000);
    QCOMPARE(bars.HScrollPosition(), 401);
    bars.SetVScrollPosition(-5);
    QCOMPARE(bars.VScrollPosition(), 10);
    // The user scrolling the bar is what the position reads.
    area.verticalScrollBar()->setValue(42);
    QCOMPARE(bars.VScrollPosition(), 42);

    // A new range keeps the page.
    bars.HScrollRange(0, 1000);
    QCOMPARE(bars.HScrollPage(), 100);
    QCOMPARE(bars.HScrollMax(), 1000);
}

void TestFlatScrollBar::aPageCoveringTheRangeGreysTheBarOut_data()
{
    QTest::addColumn<bool>("plainWindow");
    QTest::newRow("scroll area") << false;
    QTest::newRow("plain window") << true;
}

void TestFlatScrollBar::aPageCoveringTheRangeGreysTheBarOut()
{
    QFETCH(bool, plainWindow);
    QWidget plain;
    QAbstractScrollArea area;
    QWidget *window = plainWindow ? &plain : static_cast<QWidget *>(&area);
    window->resize(300, 200);
    FlatScrollBar bars;
    bars.SetWindow(window);
    QVERIFY(bars.Initialize());
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));

    bars.VScrollRange(0, 99);
    bars.SetVScrollPage(99);
    QVERIFY(bars.bar(FlatScrollBar::SB_VERT)->isEnabled());
    QVERIFY(bars.bar(FlatScrollBar::SB_VERT)->isVisible());

    // Page 100 shows all of 0..99: nothing to scroll, the bar stays, greyed.
    bars.SetVScrollPage(100);
    QTRY_VERIFY(bars.bar(FlatScrollBar::SB_VERT)->isVisible());
    QVERIFY(!bars.bar(FlatScrollBar::SB_VERT)->isEnabled());
    QVERIFY(bars.VScrollBar());
    QCOMPARE(bars.VScrollMax(), 99);
    QCOMPARE(bars.VScrollPage(), 100);

    // More to show again: the bar comes back to life.
    bars.VScrollRange(0, 400);
    QVERIFY(bars.bar(FlatScrollBar::SB_VERT)->isEnabled());
    QCOMPARE(bars.VScrollPage(), 100);
    // The horizontal bar was never touched.
    QVERIFY(bars.bar(FlatScrollBar::SB_HORZ)->isEnabled());
}

void TestFlatScrollBar::styleBitsFollowTheShownBars()
{
    QAbstractScrollArea area;
    FlatScrollBar bars;
    bars.SetWindow(&area);

    bars.SetVisible(false);
    QVERIFY(!bars.HScrollBar());
    QVERIFY(!bars.VScrollBar());
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_WINSTYLE), 0);

    bars.Refresh();
    QVERIFY(bars.HScrollBar());
    QVERIFY(bars.VScrollBar());
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_WINSTYLE), 0x300000);
    QCOMPARE(area.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);

    bars.SetEnabled(false);
    QVERIFY(!area.horizontalScrollBar()->isEnabled());
    QVERIFY(!area.verticalScrollBar()->isEnabled());
    bars.SetEnabled(true);
    QVERIFY(area.horizontalScrollBar()->isEnabled());
    QVERIFY(area.verticalScrollBar()->isEnabled());
}

void TestFlatScrollBar::aPlainWindowGetsBarsAlongItsEdges()
{
    QWidget window;
    window.resize(400, 300);
    FlatScrollBar bars;
    bars.SetWindow(&window);
    QVERIFY(bars.Initialize());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QScrollBar *across = bars.bar(FlatScrollBar::SB_HORZ);
    QScrollBar *down = bars.bar(FlatScrollBar::SB_VERT);
    QVERIFY(across && down);
    QCOMPARE(across->parentWidget(), &window);
    // Nothing to scroll yet: no bars, and the style word says so.
    QVERIFY(!across->isVisible());
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_WINSTYLE), 0);

    bars.VScrollRange(0, 50);
    QVERIFY(down->isVisible());
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_WINSTYLE), FlatScrollBar::WS_VSCROLL);
    QCOMPARE(down->geometry().right(), window.width() - 1);
    QCOMPARE(down->geometry().height(), window.height());

    bars.Refresh();
    QVERIFY(across->isVisible());
    // Both shown: the bars meet at the corner without overlapping.
    QCOMPARE(down->geometry().bottom(), across->geometry().top() - 1);
    window.resize(600, 500);
    QCOMPARE(down->geometry().right(), 599);
    QCOMPARE(across->geometry().bottom(), 499);

    // An empty range takes an ordinary bar away again.
    bars.VScrollRange(5, 5);
    QVERIFY(!down->isVisible());
}

void TestFlatScrollBar::initializeAndTerminateSwitchTheLook()
{
    FlatScrollBar loose;
    QVERIFY(!loose.Initialize());
    QVERIFY(!loose.Terminate());

    QAbstractScrollArea area;
    FlatScrollBar bars;
    bars.SetWindow(&area);
    QVERIFY(!bars.Terminate());
    QVERIFY(bars.Initialize());
    QCOMPARE(area.verticalScrollBar()->style(), FlatScrollStyle::instance());
    // Wide enough to hit with a shaky hand.
    QVERIFY(area.verticalScrollBar()->sizeHint().width() >= 28);
    QVERIFY(bars.Terminate());
    QCOMPARE(area.verticalScrollBar()->style(), QApplication::style());
    QVERIFY(!bars.Terminate());
}

void TestFlatScrollBar::propertiesAreKept()
{
    QAbstractScrollArea area;
    FlatScrollBar bars;
    bars.SetWindow(&area);
    QCOMPARE(bars.hPal(), 0);
    bars.SetProperty(FlatScrollBar::WSB_PROP_PALETTE, 1234);
    QCOMPARE(bars.hPal(), 1234);
    bars.SetProperty(FlatScrollBar::WSB_PROP_VBKGCOLOR, 0x00C0FFEE);
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_VBKGCOLOR), 0x00C0FFEE);
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_HBKGCOLOR), 0);
    // The window style is read from the window, never stored over it.
    bars.SetVisible(false);
    bars.SetProperty(FlatScrollBar::WSB_PROP_WINSTYLE, 0x300000);
    QCOMPARE(bars.Property(FlatScrollBar::WSB_PROP_WINSTYLE), 0);
}

void TestFlatScrollBar::barsChangedByTheWindowAreReadBack()
{
    QAbstractScrollArea area;
    FlatScrollBar bars;
    bars.SetWindow(&area);
    bars.HScrollRange(0, 100);
    bars.SetHScrollPage(10);
    // The window lays itself out anew and sets its own bar.
    area.horizontalScrollBar()->setPageStep(20);
    area.horizontalScrollBar()->setRange(0, 180);
    QCOMPARE(bars.HScrollPage(), 20);
    QCOMPARE(bars.HScrollMax(), 199);
    QCOMPARE(bars.HScrollMin(), 0);
}

QTEST_MAIN(TestFlatScrollBar)
#include "test_flatscrollbar.moc"
