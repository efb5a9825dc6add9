#include "app/PowerOff.h"
#include "app/Registry.h"
#include "app/SettingsStore.h"
#include "app/Shortcut.h"
#include "platform/PowerControl.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <sys/utsname.h>

PowerOff::Action PowerOff::actionFor(const Version &version)
{
    if (version.family == Family::Consumer)
        return version.major == 4 && version.minor == 90 ? Action::ShutDown : Action::None;
    if (version.major == 5 && version.minor == 0)
        return Action::LogOff;
    if (version.major == 5 && (version.minor == 1 || version.minor == 2))
        return Action::DelayedForcedShutdown;
    if (version.major == 5)
        return Action::None;
    if (version.major == 6)
        return Action::ImmediatePowerOff;
    if (version.major >= 7)
        return Action::LogOff;
    return Action::None;
}

PowerOff::Version PowerOff::parseKernelRelease(const QString &release)
{
    static const QRegularExpression numbers(QStringLiteral("^(\\d+)\\.(\\d+)"));
    const QRegularExpressionMatch match = numbers.match(release);
    Version version;
    if (match.hasMatch()) {
        version.major = match.captured(1).toInt();
        version.minor = match.captured(2).toInt();
    }
    return version;
}

PowerOff::Version PowerOff::systemVersion()
{
    utsname name = {};
    if (uname(&name) != 0)
        return Version();
    return parseKernelRelease(QString::fromLatin1(name.release));
}

QString PowerOff::programPath()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationFilePath() : QString();
}

void PowerOff::QuitRoutine(const bool &shutdownOnQuit, PowerControl &control, const Version &version)
{
    Registry registry;
    registry.RootKey = Registry::HKEY_CURRENT_USER;
    QString key = QString::fromLatin1(Registry::ShellFolders);
    registry.Load(key);
    const QString startup = registry.Data(QStringLiteral("Startup")).toString();
    registry.Unload();

    // A fresh Linux account often has no autostart folder yet; it is the
    // desktop's standard place, so make it rather than lose the link.
    if (shutdownOnQuit && !startup.isEmpty())
        QDir().mkpath(startup);
    // The folder's own name; empty when the folder does not exist.
    const QFileInfo folder(startup);
    const QString folderName = folder.isDir() ? folder.fileName() : QString();

    Shortcut shortcut;
    shortcut.setDirType(0);
    const QString title = QString::fromLatin1(SettingsStore::ApplicationName);
    if (shutdownOnQuit)
        shortcut.Make(folderName, title, programPath(), QString(), false, QString::fromLatin1(Shortcut::Programs));
    else
        shortcut.Remove(folderName, title);

    if (!shutdownOnQuit)
        return;
    switch (actionFor(version)) {
    case Action::None:
        break;
    case Action::ShutDown:
    case Action::ImmediatePowerOff:
        control.powerOff();
        break;
    case Action::LogOff:
        control.logOff();
        break;
    case Action::DelayedForcedShutdown:
        control.powerOffForcedAfter(10);
        break;
    }
}

void PowerOff::QuitRoutine(const bool &shutdownOnQuit)
{
    const auto control = PowerControl::create();
    QuitRoutine(shutdownOnQuit, *control, systemVersion());
}
