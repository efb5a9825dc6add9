#include "platform/BackingStoreWarmUp.h"

#include <QBackingStore>
#include <QTest>
#include <QWidget>

// The main window's picture buffer is made ready on another thread while
// start-up goes on; the thread must be gone before anything may paint into
// the buffer or give it back.
class BackingStoreWarmUpTest : public QObject
{
    Q_OBJECT

private slots:
    void sizesTheBufferAndEndsBeforeTheWindowIsShown()
    {
        QWidget window;
        BackingStoreWarmUp warmUp;
        window.winId();
        warmUp.start(&window, QSize(800, 500));
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));
        window.resize(800, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.repaint();
        // The window's first news from the display ended the thread.
        QVERIFY(!warmUp.isRunning());
        QCOMPARE(window.backingStore()->size(), QSize(800, 500));

        warmUp.start(nullptr, QSize(800, 500));
        QVERIFY(!warmUp.isRunning());
        QWidget plain;
        warmUp.start(&plain, QSize()); // no native window, no size
        QVERIFY(!warmUp.isRunning());
    }
};

QTEST_MAIN(BackingStoreWarmUpTest)
#include "test_backing_store_warmup.moc"
