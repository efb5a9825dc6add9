#include "platform/PrinterList.h"
#include "platform/SystemTools.h"
#include "support/CaseTable.h"
#include "support/FileBytes.h"

#include <QFile>
#include <QPrinterInfo>
#include <QTemporaryDir>
#include <QTest>

// The printer menu and the system menu.
class TestMenus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A print system that is not there: no printers at all.
        qputenv("CUPS_SERVER", qgetenv("LANTERN_TEST_ROOT") + "/no-cups.sock");
    }

    // The printer menu's captions (the proper-case rule itself is the runtime's),
    // and the printer list when there is no printer.
    void captionIsDeviceAndDriverInProperCase_data()
    {
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("caption");
        // clang-format off
        QTest::newRow("upper-case driver") << "Office" << "HP LASERJET 4" << "Office (Hp Laserjet 4)";
        QTest::newRow("device name kept as it is") << "EPSON EP-804A" << "epson" << "EPSON EP-804A (Epson)";
        QTest::newRow("no driver") << "PDF" << "" << "PDF ()";
        // clang-format on
    }

    void captionIsDeviceAndDriverInProperCase()
    {
        QFETCH(QString, device);
        QFETCH(QString, driver);
        QFETCH(QString, caption);
        QCOMPARE(PrinterList::caption({device, driver}), caption);
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

    // Every case in tests/data/system_menu: an entry, the tools installed and
    // the command that starts.
    void firstInstalledCommandStarts_data() { addCaseRows(QStringLiteral("system_menu"), 15); }

    void firstInstalledCommandStarts()
    {
        QFETCH(QString, asked);
        QFETCH(QString, answer);
        const int entry = asked.section(u'|', 0, 0).toInt();
        const QStringList installed = asked.section(u'|', 1).split(u' ', Qt::SkipEmptyParts);
        const QString started = answer.trimmed();
        // Stand-in tools that write their name and arguments into a file.
        QTemporaryDir bin;
        const QString ran = bin.filePath(QStringLiteral("ran"));
        for (const QString &tool : installed) {
            const QString script = bin.filePath(tool);
            QVERIFY(writeFileBytes(script, QStringLiteral("#!/bin/sh\necho %1 \"$@\" > %2\n").arg(tool, ran).toLocal8Bit()));
            QVERIFY(QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.path().toLocal8Bit());
        const bool opened = SystemTools::open(entry);
        qputenv("PATH", path);
        QCOMPARE(opened, !started.isEmpty());
        if (started.isEmpty())
            return;
        QCOMPARE(SystemTools::lastStarted(), started.section(u' ', 0, 0));
        QTRY_VERIFY(!fileBytes(ran).isEmpty());
        QCOMPARE(QString::fromLocal8Bit(fileBytes(ran)).trimmed(), started);
    }
};

QTEST_MAIN(TestMenus)
#include "test_menus.moc"
