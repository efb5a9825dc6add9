// Printing through a real print system: a private CUPS scheduler with a
// cups-pdf queue (scripts/cups-session.sh). Proves the printer list sees the
// queue and that a job laid out by Printing comes out as a PDF of its pages.
#include "platform/PrinterDevice.h"
#include "platform/PrinterList.h"
#include "tools/Printing.h"

#include <QDir>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class TestPrintingQueue : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_session;
    QString m_outputFolder;
    bool m_started = false;

    QString script() const
    {
        return QStringLiteral(LANTERN_SOURCE_DIR "/scripts/cups-session.sh");
    }

    // The queue's jobs in one state ("completed", "not-completed"), one a line.
    static QStringList jobs(const QString &which)
    {
        QProcess lpstat;
        lpstat.start(QStringLiteral("lpstat"), { QStringLiteral("-W"), which, QStringLiteral("-o"), QStringLiteral("PDF") });
        lpstat.waitForFinished(10000);
        return QString::fromUtf8(lpstat.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_session.isValid());
        QProcess start;
        start.start(QStringLiteral("bash"), { script(), QStringLiteral("start"), m_session.path() });
        QVERIFY(start.waitForFinished(60000));
        if (start.exitCode() == 77)
            QSKIP("no private print system here (needs root and mount namespaces)");
        QVERIFY2(start.exitCode() == 0, start.readAllStandardError().constData());
        m_started = true;
        // libcups reads CUPS_SERVER once, at its first call: set before any.
        const QStringList lines = QString::fromUtf8(start.readAllStandardOutput()).split(QLatin1Char('\n'));
        for (const QString &line : lines) {
            const qsizetype equals = line.indexOf(QLatin1Char('='));
            if (equals > 0)
                qputenv(line.left(equals).toUtf8().constData(), line.mid(equals + 1).toUtf8());
        }
        m_outputFolder = qEnvironmentVariable("LANTERN_CUPS_PDF_DIR");
        QVERIFY(!m_outputFolder.isEmpty());
    }

    void cleanupTestCase()
    {
        if (m_started)
            QProcess::execute(QStringLiteral("bash"), { script(), QStringLiteral("stop"), m_session.path() });
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

        // The job went through the queue and nothing is left in it.
        QTRY_COMPARE_WITH_TIMEOUT(jobs(QStringLiteral("completed")).size(), 1, 60000);
        QTRY_VERIFY_WITH_TIMEOUT(jobs(QStringLiteral("not-completed")).isEmpty(), 60000);
        const QDir output(m_outputFolder);
        const QStringList pdfs = output.entryList({ QStringLiteral("*.pdf") }, QDir::Files);
        QCOMPARE(pdfs.size(), 1);
        const QString pdf = output.filePath(pdfs.first());
        QProcess info;
        info.start(QStringLiteral("pdfinfo"), { pdf });
        QVERIFY(info.waitForFinished(30000));
        const QString text = QString::fromUtf8(info.readAllStandardOutput());
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("Pages:\\s+2\\n"))), qPrintable(text));
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts \\(A4\\)"))),
                 qPrintable(text));
    }
};

QTEST_MAIN(TestPrintingQueue)
#include "test_printing_queue.moc"
