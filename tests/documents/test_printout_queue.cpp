// The word processor's printout through a real print queue: a private CUPS
// scheduler with a cups-pdf queue, which the program finds as the current
// printer, as the print button does.
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/DocumentRecord.h"
#include "documents/WordProcessor.h"
#include "platform/PrinterDevice.h"
#include "platform/PrinterList.h"
#include "support/AppletTestHost.h"
#include "support/CupsSession.h"
#include "support/PdfReadBack.h"
#include "tools/Printing.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

class TestPrintoutQueue : public QObject
{
    Q_OBJECT

private:
    CupsSession m_cups;

private slots:
    void initTestCase()
    {
        LANTERN_START_CUPS_SESSION(m_cups);
    }

    void cleanupTestCase()
    {
        m_cups.stop();
    }

    void aDocumentRunningOverItsBoxComesOutOnTwoSheets()
    {
        AppletTestHost host;
        auto *applet = new DatabaseApplet(&host);
        applet->setGeometry(0, 0, 1100, 880);
        applet->Load();
        applet->Reload();
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.page(1).item(1).Height = 10.0f; // room for about 16 lines
        applet->setRecord(&record);
        applet->setDocument(10);
        applet->Start();
        QTextCursor cursor(applet->WordProcessors(1)->document());
        for (int line = 1; line <= 20; ++line) {
            if (line > 1)
                cursor.insertBlock();
            cursor.insertText(QStringLiteral("第%1行目の文章です").arg(line));
        }

        QCOMPARE(applet->Printout(), true);
        QCOMPARE(host.printing()->deviceName(), QStringLiteral("PDF"));

        const QStringList pdfs = m_cups.waitForPdfs();
        QVERIFY(m_cups.jobs(QStringLiteral("not-completed")).isEmpty());
        QCOMPARE(m_cups.jobs(QStringLiteral("completed")).size(), 1);
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(PdfReadBack::pageCount(pdfs.first()), 2);
    }
};

QTEST_MAIN(TestPrintoutQueue)
#include "test_printout_queue.moc"
