// Printing through a real print system: a private CUPS scheduler with a
// cups-pdf queue. The word processor's printout, sent to the current printer
// as the print button does, comes out as an A4 PDF of its sheets.
#include "documents/WordProcessor.h"
#include "support/CupsSession.h"
#include "support/PdfReadBack.h"
#include "support/WordProcessorHost.h"
#include "tools/Printing.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

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
        record.page(1).item(1).Height = 0.8f; // room for one line
        fixture.open(record);
        fixture.applet->WordProcessors(1)->setPlainText(QStringLiteral("一行目\n二行目"));

        QCOMPARE(fixture.applet->Printout(), true);
        Printing *printing = fixture.host.printing();
        QCOMPARE(std::pair(printing->deviceName(), printing->driverName()),
                 std::pair(u"PDF"_s, u"Generic CUPS-PDF Printer (w/ options)"_s));
        const QStringList pdfs = m_cups.waitForPdfs();
        QVERIFY(m_cups.jobs(u"not-completed"_s).isEmpty());
        QCOMPARE(m_cups.jobs(u"completed"_s).size(), 1);
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(PdfReadBack::pageCount(pdfs.first()), 2);
        const QString info = PdfReadBack::info(pdfs.first());
        QVERIFY2(info.contains(QRegularExpression(u"Page size:\\s+595 x 842 pts \\(A4\\)"_s)), qPrintable(info));
    }
};

QTEST_MAIN(TestPrintoutQueue)
#include "test_printout_queue.moc"
