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

using namespace Qt::StringLiterals;

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
        QCOMPARE(std::pair(printers.first().deviceName, printers.first().driverName),
                 std::pair(u"PDF"_s, u"Generic CUPS-PDF Printer (w/ options)"_s));
        QCOMPARE(PrinterList::caption(printers.first()), u"PDF (Generic Cups-pdf Printer (w/ Options))"_s);
        QCOMPARE(std::pair(PrinterList::defaultPrinter(), PrinterList::currentPrinter()), std::pair(u"PDF"_s, u"PDF"_s));
        PrinterList::setCurrentPrinter(u"Gone"_s);   // not a printer here: the choice stays
        QCOMPARE(std::pair(PrinterList::currentPrinter(), PrinterList::currentPrinterInfo().printerName()),
                 std::pair(u"PDF"_s, u"PDF"_s));
    }

    void aJobComesOutAsAPdfOfItsPages()
    {
        Printing printing;
        QSizeF page(21, 29.7);
        QString definedOn;
        connect(&printing, &Printing::Define, this,
                [&](qint16, QSizeF *) { definedOn = printing.printer()->deviceName(); });
        printing.Alloc(true, &page, 1);
        QCOMPARE(std::tuple(definedOn, printing.deviceName(), printing.driverName(), printing.printer()->paperSize()),
                 std::tuple(u"PDF"_s, u"PDF"_s, u"Generic CUPS-PDF Printer (w/ options)"_s, 9));
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
        QCOMPARE(std::pair(m_cups.jobs(u"not-completed"_s).size(), m_cups.jobs(u"completed"_s).size()), std::pair(qsizetype(0), qsizetype(1)));
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(PdfReadBack::pageCount(pdfs.first()), 2);
        const QString text = PdfReadBack::info(pdfs.first());
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts \\(A4\\)"))),
                 qPrintable(text));
    }
};

QTEST_MAIN(TestPrintingQueue)
#include "test_printing_queue.moc"
