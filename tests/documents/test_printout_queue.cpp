// The word processor's printout through a real print queue: a private CUPS
// scheduler with a cups-pdf queue, which the program finds as the current
// printer, as the print button does.
#include "documents/WordProcessor.h"
#include "support/CupsSession.h"
#include "support/PdfReadBack.h"
#include "support/WordProcessorHost.h"
#include "tools/Printing.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

class TestPrintoutQueue : public QObject
{
    Q_OBJECT

    CupsSession m_cups;

private slots:
    void initTestCase() { LANTERN_START_CUPS_SESSION(m_cups); }
    void cleanupTestCase() { m_cups.stop(); }

    void aDocumentRunningOverItsBoxComesOutOnTwoSheets()
    {
        WordProcessorHost fixture;
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.page(1).item(1).Height = 10.0f; // room for about 16 lines
        fixture.open(record);
        QStringList lines;
        for (int line = 1; line <= 20; ++line)
            lines << QStringLiteral("第%1行目の文章です").arg(line);
        fixture.applet->WordProcessors(1)->setPlainText(lines.join(QLatin1Char('\n')));

        QCOMPARE(fixture.applet->Printout(), true);
        QCOMPARE(fixture.host.printing()->deviceName(), QStringLiteral("PDF"));
        const QStringList pdfs = m_cups.waitForPdfs();
        QVERIFY(m_cups.jobs(QStringLiteral("not-completed")).isEmpty());
        QCOMPARE(m_cups.jobs(QStringLiteral("completed")).size(), 1);
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(PdfReadBack::pageCount(pdfs.first()), 2);
    }
};

QTEST_MAIN(TestPrintoutQueue)
#include "test_printout_queue.moc"
