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

    // The queue is the system's default, so it is the program's printer.
    void listsTheQueueAndFollowsTheChoice()
    {
        Workspace workspace;
        QVERIFY(openPrinterMenu(workspace));
        const auto entries = [&workspace] {
            QStringList shown;
            for (const QAction *entry : openPrinterMenu(workspace)->actions())
                shown << entry->text() + (entry->isChecked() ? QStringLiteral(" [checked]") : QString());
            return shown;
        };
        const QString none = QStringLiteral("(なし)"), pdf = QStringLiteral("PDF (Generic Cups-pdf Printer (w/ Options))");
        QCOMPARE(entries(), (QStringList{none, pdf + QStringLiteral(" [checked]")}));
        openPrinterMenu(workspace)->actions().at(0)->trigger();
        QCOMPARE(PrinterList::currentPrinter(), QString());
        QCOMPARE(entries(), (QStringList{none + QStringLiteral(" [checked]"), pdf}));
        openPrinterMenu(workspace)->actions().at(1)->trigger();
        QCOMPARE(PrinterList::currentPrinter(), QStringLiteral("PDF"));
    }
};

QTEST_MAIN(PrinterMenuQueueTest)
#include "test_printer_menu_queue.moc"
