#include "platform/XdgPaths.h"

#include <QDir>

#include <pwd.h>
#include <unistd.h>

QString XdgPaths::home()
{
    const QString fromEnv = qEnvironmentVariable("HOME");
    if (!fromEnv.isEmpty())
        return fromEnv;
    // An unset HOME must not send our files to the root folder: ask the
    // password database instead.
    if (const passwd *entry = getpwuid(getuid()); entry && entry->pw_dir)
        return QString::fromLocal8Bit(entry->pw_dir);
    return QDir::tempPath();
}

QString XdgPaths::fromEnvironment(const char *name, const QString &fallback)
{
    const QString value = qEnvironmentVariable(name);
    // The XDG rules ignore relative paths.
    if (!value.isEmpty() && QDir::isAbsolutePath(value))
        return value;
    return home() + fallback;
}

QString XdgPaths::configHome() { return fromEnvironment("XDG_CONFIG_HOME", "/.config"); }
QString XdgPaths::dataHome() { return fromEnvironment("XDG_DATA_HOME", "/.local/share"); }
QString XdgPaths::stateHome() { return fromEnvironment("XDG_STATE_HOME", "/.local/state"); }
QString XdgPaths::cacheHome() { return fromEnvironment("XDG_CACHE_HOME", "/.cache"); }
