#include "platform/FlatScrollStyle.h"
#include "tools/FlatScrollBar.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QScrollBar>
#include <QtTest>

// Window style bits read through property 1024: horizontal bar 1 << 20, vertical 1 << 21.
class TestFlatScrollBar : public QObject
{
    Q_OBJECT

private slots:
    // A range includes its maximum, and the last position leaves one page in view.
    void rangesMapOntoTheWindowsBars()
    {
        QAbstractScrollArea area;
        FlatScrollBar bars;
        bars.SetWindow(&area);
        QScrollBar *across = area.horizontalScrollBar();
        bars.HScrollRange(0, 500);
        bars.SetHScrollPage(100);
        bars.SetHScrollPosition(1000);
        QCOMPARE(std::tuple(across->minimum(), across->maximum(), across->pageStep(), across->value()),
                 std::tuple(0, 401, 100, 401));
        QCOMPARE(std::tuple(bars.HScrollMax(), bars.HScrollPosition()), std::tuple(500, 401));
        bars.VScrollRange(10, 90);
        bars.SetVScrollPosition(-5);
        QCOMPARE(area.verticalScrollBar()->value(), 10);
        // What the window or the user sets on its bars is read back.
        area.verticalScrollBar()->setValue(42);
        QCOMPARE(bars.VScrollPosition(), 42);
        across->setPageStep(20);
        across->setRange(0, 180);
        QCOMPARE(std::tuple(bars.HScrollMin(), bars.HScrollMax(), bars.HScrollPage()), std::tuple(0, 199, 20));

        // Initialize and Terminate switch the look, each once, and only with a window.
        FlatScrollBar loose;
        QVERIFY(!loose.Initialize());
        QVERIFY(!loose.Terminate());
        QVERIFY(!bars.Terminate());
        QVERIFY(bars.Initialize());
        QCOMPARE(area.verticalScrollBar()->style(), FlatScrollStyle::instance());
        QVERIFY(bars.Terminate());
        QCOMPARE(area.verticalScrollBar()->style(), QApplication::style());
        QVERIFY(!bars.Terminate());
    }

    // On a scroll area's bars and on a plain window's own bars, which the
    // window gets from the wrapper.
    void theBarsShowGreyOutAndReportTheirStyleBits()
    {
        QWidget plain;
        QAbstractScrollArea area;
        for (QWidget *window : {static_cast<QWidget *>(&area), &plain}) {
            window->resize(300, 200);
            FlatScrollBar bars;
            bars.SetWindow(window);
            QVERIFY(bars.Initialize());
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window));
            QScrollBar *down = bars.bar(FlatScrollBar::SB_VERT);
            QScrollBar *across = bars.bar(FlatScrollBar::SB_HORZ);
            QVERIFY(window->isAncestorOf(down));
            // Shown only while there is a range.
            QCOMPARE(bars.Property(1024), 0);
            bars.VScrollRange(0, 50);
            QCOMPARE(bars.Property(1024), 0x200000);
            QTRY_VERIFY(down->isVisible());
            bars.VScrollRange(5, 5);
            QCOMPARE(bars.Property(1024), 0);
            QTRY_VERIFY(!down->isVisible());
            bars.VScrollRange(0, 99);
            bars.SetVScrollPage(99);
            QVERIFY(down->isEnabled() && down->isVisible());
            // Page 100 shows all of 0..99: nothing to scroll, the bar stays, greyed.
            bars.SetVScrollPage(100);
            QTRY_VERIFY(down->isVisible());
            QVERIFY(!down->isEnabled());
            QCOMPARE(std::tuple(bars.VScrollBar(), bars.VScrollMax(), bars.VScrollPage()), std::tuple(true, 99, 100));
            // More to show again: the bar comes back to life, with its page.
            bars.VScrollRange(0, 400);
            QVERIFY(down->isEnabled());
            QCOMPARE(bars.VScrollPage(), 100);
            QVERIFY(across->isEnabled());

            bars.Refresh();
            QCOMPARE(bars.Property(1024), 0x300000);
            QTRY_VERIFY(down->isVisible() && across->isVisible());
            // Both shown: the bars meet at the corner without overlapping.
            QCOMPARE(down->mapTo(window, down->rect().bottomLeft()).y() + 1, across->mapTo(window, QPoint()).y());
            bars.SetVisible(false);
            QVERIFY(!bars.HScrollBar() && !bars.VScrollBar());
            bars.SetProperty(1024, 0x300000); // read from the window, never stored over it
            QCOMPARE(bars.Property(1024), 0);
            bars.SetProperty(2048, 1234); // the palette property
            QCOMPARE(bars.hPal(), 1234);
            bars.SetEnabled(false);
            QVERIFY(!across->isEnabled() && !down->isEnabled());
            bars.SetEnabled(true);
            QVERIFY(across->isEnabled() && down->isEnabled());
        }
    }
};

QTEST_MAIN(TestFlatScrollBar)
#include "test_flatscrollbar.moc"
