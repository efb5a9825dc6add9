// Printing through a real print system: a private CUPS scheduler with a
// cups-pdf queue. Proves the printer list sees the queue and that a job laid
// out by Printing comes out as a PDF of its pages.
#include "platform/PrinterDevice.h"
#include "platform/PrinterList.h"
#include "support/CupsSession.h"
#include "support/PdfReadBack.h"
#include "tools/Printing.h"

#include <QPrinterInfo>
#include <QRegularExpression>
#include <QTest>

class TestPrintingQueue : public QObject
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

    void theMenuListsTheQueue()
    {
        const QList<PrinterList::Entry> printers = PrinterList::printers();
        QCOMPARE(printers.size(), 1);
        QCOMPARE(printers.first().deviceName, QStringLiteral("PDF"));
        QCOMPARE(printers.first().driverName, QStringLiteral("Generic CUPS-PDF Printer (w/ options)"));
        QCOMPARE(PrinterList::caption(printers.first()),
                 QStringLiteral("PDF (Generic Cups-pdf Printer (w/ Options))"));
        QCOMPARE(PrinterList::defaultPrinter(), QStringLiteral("PDF"));

        QCOMPARE(PrinterList::currentPrinter(), QStringLiteral("PDF"));
        PrinterList::setCurrentPrinter(QStringLiteral("Gone"));
        QCOMPARE(PrinterList::currentPrinter(), QStringLiteral("PDF"));
        PrinterList::setCurrentPrinter(QStringLiteral("PDF"));
        QCOMPARE(PrinterList::currentPrinterInfo().printerName(), QStringLiteral("PDF"));
    }

    void aJobComesOutAsAPdfOfItsPages()
    {
        Printing printing;
        QSizeF page(21, 29.7);
        QString definedOn;
        connect(&printing, &Printing::Define, this,
                [&](qint16, QSizeF *) { definedOn = printing.printer()->deviceName(); });
        printing.Alloc(true, &page, 1);
        QCOMPARE(definedOn, QStringLiteral("PDF"));
        QCOMPARE(printing.deviceName(), QStringLiteral("PDF"));
        QCOMPARE(printing.driverName(), QStringLiteral("Generic CUPS-PDF Printer (w/ options)"));
        QCOMPARE(printing.printer()->paperSize(), 9);
        printing.Margins(0, 2);
        for (int number = 1; number <= 2; ++number) {
            printing.Alloc(false, &page, 1);
            printing.Locate(0, 1, false);
            printing.LPrint(Printing::AlignCenter, QStringLiteral("試し刷り %1 ページ").arg(number));
            printing.Line(0, 2, 17, 2);
            printing.NewPage();
        }
        printing.EndDoc();

        const QStringList pdfs = m_cups.waitForPdfs();
        QVERIFY(m_cups.jobs(QStringLiteral("not-completed")).isEmpty());
        QCOMPARE(m_cups.jobs(QStringLiteral("completed")).size(), 1);
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(PdfReadBack::pageCount(pdfs.first()), 2);
        const QString text = PdfReadBack::info(pdfs.first());
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts \\(A4\\)"))),
                 qPrintable(text));
    }
};

QTEST_MAIN(TestPrintingQueue)
#include "test_printing_queue.moc"
