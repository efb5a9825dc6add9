#pragma once

#include <QString>

// The per-user folders of the XDG base directory rules. Read from the
// environment every time, so that tests can point them at a private folder.
class XdgPaths
{
public:
    static QString home();
    static QString configHome();
    static QString dataHome();
    static QString stateHome();
    static QString cacheHome();

private:
    static QString fromEnvironment(const char *name, const QString &fallback);
};
