#include "platform/BackingStoreWarmUp.h"

#include <QBackingStore>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>
#include <QWidget>

#include <sys/resource.h>

namespace {

// A window that paints every pixel, as the workspace does.
class FullWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), QColor(40, 60, 120)); }
};

// Page faults this thread takes to show `window` at `size` for the first time.
long faultsOfFirstPaint(FullWindow &window, BackingStoreWarmUp *warmUp, QSize size)
{
    window.winId();
    if (warmUp)
        warmUp->start(&window, size);
    window.resize(size);
    rusage before = {}, after = {};
    getrusage(RUSAGE_THREAD, &before);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return -1;
    window.repaint();
    getrusage(RUSAGE_THREAD, &after);
    return after.ru_minflt - before.ru_minflt;
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
        BackingStoreWarmUp warmUp;
        window.winId();
        warmUp.start(&window, QSize(800, 500));
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));
        QVERIFY(faultsOfFirstPaint(window, nullptr, QSize(800, 500)) >= 0);
        // The window's first news from the display ended the thread.
        QVERIFY(!warmUp.isRunning());
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));

        warmUp.start(nullptr, QSize(800, 500));
        QVERIFY(!warmUp.isRunning());
        QWidget plain;
        warmUp.start(&plain, QSize()); // no native window, no size
        QVERIFY(!warmUp.isRunning());
    }

    // On X11 the buffer is memory shared with the X server: after the
    // warm-up the first paint no longer takes a fault for each page of it.
    void firstPaintFindsThePagesReady()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("the buffer is shared memory on X11 only");
        FullWindow cold, warm;
        BackingStoreWarmUp warmUp;
        const long without = faultsOfFirstPaint(cold, nullptr, QSize(1600, 1000));
        const long with = faultsOfFirstPaint(warm, &warmUp, QSize(1600, 1000));
        // 1600 × 1000 × 4 bytes is about 1,560 pages.
        QVERIFY2(without > 1000 && with >= 0 && with < without / 4,
                 qPrintable(QStringLiteral("%1 with, %2 without").arg(with).arg(without)));
    }
};

QTEST_MAIN(BackingStoreWarmUpTest)
#include "test_backing_store_warmup.moc"
