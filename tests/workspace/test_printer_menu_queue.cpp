#include "platform/PrinterList.h"
#include "support/CupsSession.h"
#include "workspace/Workspace.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

// The window's printer menu over a real (private) CUPS queue: one entry per
// printer captioned "device (Driver In Proper Case)", the current one checked,
// and a choice that makes a printer the program's own.
class PrinterMenuQueueTest : public QObject
{
    Q_OBJECT

private:
    CupsSession m_cups;

    static QMenu *openPrinterMenu(Workspace &workspace)
    {
        // The menu is rebuilt from the system's list each time it opens.
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), workspace.mapToGlobal(QPoint(10, 10)));
        QApplication::sendEvent(&workspace, &event);
        workspace.systemMenu()->close();
        return workspace.systemMenu()->findChild<QMenu *>(QStringLiteral("PrinterMenus"));
    }

private slots:
    void initTestCase()
    {
        LANTERN_START_CUPS_SESSION(m_cups);
    }

    void cleanupTestCase()
    {
        m_cups.stop();
    }

    void listsTheQueueAndFollowsTheChoice()
    {
        Workspace workspace;
        QMenu *printers = openPrinterMenu(workspace);
        QVERIFY(printers);
        QList<QAction *> entries = printers->actions();
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries.at(0)->text(), QStringLiteral("(なし)"));
        QCOMPARE(entries.at(1)->text(), QStringLiteral("PDF (Generic Cups-pdf Printer (w/ Options))"));
        // The queue is the system's default, so it is the program's printer.
        QVERIFY(entries.at(1)->isChecked());
        QVERIFY(!entries.at(0)->isChecked());

        entries.at(0)->trigger();
        QCOMPARE(PrinterList::currentPrinter(), QString());
        entries = openPrinterMenu(workspace)->actions();
        QVERIFY(entries.at(0)->isChecked());
        QVERIFY(!entries.at(1)->isChecked());

        entries.at(1)->trigger();
        QCOMPARE(PrinterList::currentPrinter(), QStringLiteral("PDF"));
    }
};

QTEST_MAIN(PrinterMenuQueueTest)
#include "test_printer_menu_queue.moc"
