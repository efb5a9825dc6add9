#include "app/PowerOff.h"
#include "app/Shortcut.h"
#include "platform/RecordingPowerControl.h"
#include "support/FileBytes.h"

#include <QFile>
#include <QTest>

Q_DECLARE_METATYPE(PowerOff::Version)

// The quit routine: the start-up link follows the option at every quit, and
// with the option on the computer is powered off as the version table says.
// Power requests only ever reach a recording control.
class PowerOffTest : public QObject
{
    Q_OBJECT

    static QString autostartEntry()
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/autostart/Fernwick Nib 2007.desktop");
    }

private slots:
    void init() { QFile::remove(autostartEntry()); }

    void optionOnLinksAndActsByVersion_data()
    {
        using F = PowerOff::Family;
        using A = PowerOff::Action;
        QTest::addColumn<PowerOff::Version>("version");
        QTest::addColumn<int>("action");
        QTest::addColumn<QStringList>("requests");
        const QStringList none, off{"powerOff"}, logOff{"logOff"}, forced{"powerOffForcedAfter 10"};
        QTest::newRow("consumer 4.90") << PowerOff::Version{F::Consumer, 4, 90} << int(A::ShutDown) << off;
        QTest::newRow("consumer 4.10") << PowerOff::Version{F::Consumer, 4, 10} << int(A::None) << none;
        QTest::newRow("NT 4.0") << PowerOff::Version{F::NT, 4, 0} << int(A::None) << none;
        QTest::newRow("NT 5.0") << PowerOff::Version{F::NT, 5, 0} << int(A::LogOff) << logOff;
        QTest::newRow("NT 5.1") << PowerOff::Version{F::NT, 5, 1} << int(A::DelayedForcedShutdown) << forced;
        QTest::newRow("NT 5.2") << PowerOff::Version{F::NT, 5, 2} << int(A::DelayedForcedShutdown) << forced;
        QTest::newRow("NT 5.3") << PowerOff::Version{F::NT, 5, 3} << int(A::None) << none;
        QTest::newRow("NT 5.10") << PowerOff::Version{F::NT, 5, 10} << int(A::None) << none;
        QTest::newRow("NT 6.0") << PowerOff::Version{F::NT, 6, 0} << int(A::ImmediatePowerOff) << off;
        QTest::newRow("NT 6.1") << PowerOff::Version{F::NT, 6, 1} << int(A::ImmediatePowerOff) << off;
        QTest::newRow("NT 7.0") << PowerOff::Version{F::NT, 7, 0} << int(A::LogOff) << logOff;
        QTest::newRow("NT 10.0") << PowerOff::Version{F::NT, 10, 0} << int(A::LogOff) << logOff;
    }

    void optionOnLinksAndActsByVersion()
    {
        QFETCH(PowerOff::Version, version);
        QTEST(int(PowerOff::actionFor(version)), "action");
        RecordingPowerControl control;
        const bool on = true;
        PowerOff::QuitRoutine(on, control, version);
        QTEST(control.requests(), "requests");

        const QByteArray text = fileBytes(autostartEntry());
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

    void dirTypeTakesOnlyZeroOrOne()
    {
        Shortcut shortcut;
        QCOMPARE(shortcut.DirType(), 0);
        for (const auto &[written, read] : {std::pair{1, 1}, {7, 1}, {-1, 1}, {0, 0}, {2, 0}}) {
            shortcut.setDirType(written);
            QVERIFY2(shortcut.DirType() == read, qPrintable(QString::number(written)));
        }
    }

    void aLinkWithoutAFolderNameIsNotMade()
    {
        Shortcut shortcut;
        QVERIFY(!shortcut.Make(QString(), "Fernwick Nib 2007", "/opt/lantern", QString(), false, "$(Programs)"));
        QVERIFY(!QFile::exists(autostartEntry()));
    }
};

QTEST_GUILESS_MAIN(PowerOffTest)
#include "test_power_off.moc"
