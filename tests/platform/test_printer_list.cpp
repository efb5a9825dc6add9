// The printer menu's captions, and the printer list when there is no printer.
#include "platform/PrinterList.h"

#include <QPrinterInfo>
#include <QTest>

class TestPrinterList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A print system that is not there: no printers at all.
        qputenv("CUPS_SERVER", qgetenv("LANTERN_TEST_ROOT") + "/no-cups.sock");
    }

    void captionIsDeviceAndDriverInProperCase_data()
    {
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("caption");
        QTest::newRow("upper-case driver") << "Office" << "HP LASERJET 4" << "Office (Hp Laserjet 4)";
        QTest::newRow("mixed case") << "kitchen_inkjet" << "canon iP2700 series" << "kitchen_inkjet (Canon Ip2700 Series)";
        QTest::newRow("device name kept as it is") << "EPSON EP-804A" << "epson" << "EPSON EP-804A (Epson)";
        QTest::newRow("no driver") << "PDF" << "" << "PDF ()";
        QTest::newRow("Japanese") << "居間のプリンタ" << "キヤノン 汎用" << "居間のプリンタ (キヤノン 汎用)";
    }

    void captionIsDeviceAndDriverInProperCase()
    {
        QFETCH(QString, device);
        QFETCH(QString, driver);
        QFETCH(QString, caption);
        QCOMPARE(PrinterList::caption({ device, driver }), caption);
    }

    void noPrinterAtAll()
    {
        QVERIFY(PrinterList::printers().isEmpty());
        QCOMPARE(PrinterList::defaultPrinter(), QString());
        QCOMPARE(PrinterList::currentPrinter(), QString());
        PrinterList::setCurrentPrinter(QStringLiteral("Office"));
        QCOMPARE(PrinterList::currentPrinter(), QString());
        QVERIFY(PrinterList::currentPrinterInfo().isNull());
    }
};

QTEST_MAIN(TestPrinterList)
#include "test_printer_list.moc"
