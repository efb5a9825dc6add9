#include "app/PowerOff.h"
#include "app/Shortcut.h"
#include "platform/RecordingPowerControl.h"

#include <QDir>
#include <QFile>
#include <QTest>

// The quit routine: the start-up link follows the option, and the power-off
// follows the version table.
class PowerOffTest : public QObject
{
    Q_OBJECT

private:
    static QString autostartEntry()
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/autostart/Fernwick Nib 2007.desktop");
    }

private slots:
    void init()
    {
        QFile::remove(autostartEntry());
    }

    void versionTableRowByRow_data()
    {
        using F = PowerOff::Family;
        using A = PowerOff::Action;
        QTest::addColumn<int>("family");
        QTest::addColumn<int>("major");
        QTest::addColumn<int>("minor");
        QTest::addColumn<int>("action");
        QTest::newRow("consumer 4.90") << int(F::Consumer) << 4 << 90 << int(A::ShutDown);
        QTest::newRow("consumer 4.10") << int(F::Consumer) << 4 << 10 << int(A::None);
        QTest::newRow("NT 5.0") << int(F::NT) << 5 << 0 << int(A::LogOff);
        QTest::newRow("NT 5.1") << int(F::NT) << 5 << 1 << int(A::DelayedForcedShutdown);
        QTest::newRow("NT 5.2") << int(F::NT) << 5 << 2 << int(A::DelayedForcedShutdown);
        QTest::newRow("NT 5.3") << int(F::NT) << 5 << 3 << int(A::None);
        QTest::newRow("NT 5.10") << int(F::NT) << 5 << 10 << int(A::None);
        QTest::newRow("NT 6.0") << int(F::NT) << 6 << 0 << int(A::ImmediatePowerOff);
        QTest::newRow("NT 6.1") << int(F::NT) << 6 << 1 << int(A::ImmediatePowerOff);
        QTest::newRow("NT 7.0") << int(F::NT) << 7 << 0 << int(A::LogOff);
        QTest::newRow("NT 10.0") << int(F::NT) << 10 << 0 << int(A::LogOff);
        QTest::newRow("NT 4.0") << int(F::NT) << 4 << 0 << int(A::None);
    }

    void versionTableRowByRow()
    {
        QFETCH(int, family);
        QFETCH(int, major);
        QFETCH(int, minor);
        const PowerOff::Version version{PowerOff::Family(family), major, minor};
        QTEST(int(PowerOff::actionFor(version)), "action");
    }

    void kernelReleaseNumbers()
    {
        const PowerOff::Version v = PowerOff::parseKernelRelease("6.1.0-18-amd64");
        QCOMPARE(v.major, 6);
        QCOMPARE(v.minor, 1);
        QCOMPARE(int(v.family), int(PowerOff::Family::NT));
        QCOMPARE(PowerOff::parseKernelRelease("garbage").major, 0);
    }

    void optionOnPlacesTheLinkAndActsByVersion_data()
    {
        QTest::addColumn<int>("major");
        QTest::addColumn<int>("minor");
        QTest::addColumn<QStringList>("requests");
        QTest::newRow("5.1: forced, after 10 s") << 5 << 1 << QStringList{"powerOffForcedAfter 10"};
        QTest::newRow("5.0: log off") << 5 << 0 << QStringList{"logOff"};
        QTest::newRow("6.1: power off") << 6 << 1 << QStringList{"powerOff"};
        QTest::newRow("10.0: log off") << 10 << 0 << QStringList{"logOff"};
        QTest::newRow("5.4: nothing") << 5 << 4 << QStringList{};
    }

    void optionOnPlacesTheLinkAndActsByVersion()
    {
        QFETCH(int, major);
        QFETCH(int, minor);
        RecordingPowerControl control;
        const bool on = true;
        PowerOff::QuitRoutine(on, control, {PowerOff::Family::NT, major, minor});
        QTEST(control.requests(), "requests");

        QFile entry(autostartEntry());
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QByteArray text = entry.readAll();
        QVERIFY(text.startsWith("[Desktop Entry]\nType=Application\nName=Fernwick Nib 2007\n"));
        QVERIFY2(text.contains("Exec=\"" + PowerOff::programPath().toUtf8() + "\"\n"), text);
    }

    void optionOffRemovesTheLinkAndKeepsTheComputerOn()
    {
        RecordingPowerControl control;
        const bool on = true, off = false;
        PowerOff::QuitRoutine(on, control, {PowerOff::Family::Consumer, 4, 10});
        QVERIFY(QFile::exists(autostartEntry()));
        PowerOff::QuitRoutine(off, control, {PowerOff::Family::NT, 6, 1});
        QVERIFY(!QFile::exists(autostartEntry()));
        QVERIFY(control.requests().isEmpty());
    }

    void shortcutDirType()
    {
        Shortcut shortcut;
        QCOMPARE(shortcut.DirType(), 0);
        shortcut.setDirType(1);
        QCOMPARE(shortcut.DirType(), 1);
        shortcut.setDirType(7);
        QCOMPARE(shortcut.DirType(), 1);
        shortcut.setDirType(0);
        QCOMPARE(shortcut.DirType(), 0);
    }

    void aLinkWithoutAFolderNameIsNotMade()
    {
        Shortcut shortcut;
        QVERIFY(!shortcut.Make(QString(), "Fernwick Nib 2007", "/opt/lantern", QString(), false, "$(Programs)"));
        QVERIFY(!QFile::exists(autostartEntry()));
    }

    void aRecordingFileReceivesEveryRequest()
    {
        const QString path = QDir::temp().filePath("power-requests-test.log");
        QFile::remove(path);
        RecordingPowerControl control(path);
        control.powerOff();
        control.logOff();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("powerOff\nlogOff\n"));
        file.remove();
    }
};

QTEST_GUILESS_MAIN(PowerOffTest)
#include "test_power_off.moc"
