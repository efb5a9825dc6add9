#include "platform/BackingStoreWarmUp.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <sys/resource.h>

namespace {

// A window that paints every pixel, as the workspace does.
class FullWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), QColor(40, 60, 120)); }
};

long minorFaultsOfThisThread()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_minflt;
}

// Page faults this thread takes to show `window` for the first time: the
// display's news that it is on the screen paints it.
long faultsOfFirstPaint(FullWindow &window, BackingStoreWarmUp *warmUp)
{
    const QSize size(1600, 1000);
    window.winId();
    if (warmUp)
        warmUp->start(&window, size);
    window.resize(size);
    const long before = minorFaultsOfThisThread();
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return -1;
    window.repaint();
    return minorFaultsOfThisThread() - before;
}

} // namespace

// The main window's picture buffer is made ready on another thread while
// start-up goes on; the thread must be gone before anything may paint into
// the buffer or give it back.
class BackingStoreWarmUpTest : public QObject
{
    Q_OBJECT

private slots:
    void sizesTheBufferAndEndsBeforeTheWindowIsShown()
    {
        FullWindow window;
        window.winId();
        BackingStoreWarmUp warmUp;
        warmUp.start(&window, QSize(800, 500));
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));
        window.resize(800, 500);
        window.show();
        // The window's first news from the display ends the thread first.
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(!warmUp.isRunning());
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));
        warmUp.finish();
        QVERIFY(!warmUp.isRunning());
    }

    void nothingToDoWithoutAWindow()
    {
        BackingStoreWarmUp warmUp;
        warmUp.start(nullptr, QSize(800, 500));
        QVERIFY(!warmUp.isRunning());
        QWidget window;
        warmUp.start(&window, QSize()); // no native window, no size
        QVERIFY(!warmUp.isRunning());
    }

    // On X11 the buffer is memory shared with the X server: after the
    // warm-up the first paint no longer takes a fault for each page of it.
    void firstPaintFindsThePagesReady()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("the buffer is shared memory on X11 only");
        FullWindow cold;
        const long without = faultsOfFirstPaint(cold, nullptr);
        FullWindow warm;
        BackingStoreWarmUp warmUp;
        const long with = faultsOfFirstPaint(warm, &warmUp);
        QVERIFY(without >= 0 && with >= 0);
        // 1600 × 1000 × 4 bytes is about 1,560 pages.
        QVERIFY2(without > 1000, qPrintable(QString::number(without)));
        QVERIFY2(with < without / 4, qPrintable(QStringLiteral("%1 with, %2 without").arg(with).arg(without)));
    }
};

QTEST_MAIN(BackingStoreWarmUpTest)
#include "test_backing_store_warmup.moc"
