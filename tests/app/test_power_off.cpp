#include "app/PowerOff.h"
#include "app/Shortcut.h"
#include "platform/RecordingPowerControl.h"
#include "support/CaseTable.h"
#include "support/FileBytes.h"

#include <QFile>
#include <QTest>

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

    // Every case in tests/data/power_off: a version, its action and the
    // requests made; the start-up link is made whatever the version.
    void optionOnLinksAndActsByVersion_data() { addCaseRows(QStringLiteral("power_off"), 12); }

    void optionOnLinksAndActsByVersion()
    {
        QFETCH(QString, asked);
        using A = PowerOff::Action;
        const QMap<A, QString> actions{{A::None, "None"}, {A::ShutDown, "ShutDown"}, {A::LogOff, "LogOff"}, {A::DelayedForcedShutdown, "DelayedForcedShutdown"}, {A::ImmediatePowerOff, "ImmediatePowerOff"}};
        const PowerOff::Version version{asked.startsWith(u"NT") ? PowerOff::Family::NT : PowerOff::Family::Consumer,
                                        asked.section(u' ', 1).section(u'.', 0, 0).toInt(),
                                        asked.section(u'.', 1).toInt()};
        RecordingPowerControl control;
        const bool on = true;
        PowerOff::QuitRoutine(on, control, version);
        QTEST((QStringList{actions.value(PowerOff::actionFor(version))} + control.requests()).join(u", "), "answer");

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
