#pragma once

#include <QString>

// Makes and removes the program's link in a folder of the user's menu. On
// Linux a link is a desktop entry ("<link name>.desktop"); the parent folder
// token "$(Programs)" stands for the user's configuration folder, so that the
// folder "autostart" below it is the folder of programs started at log-in.
class Shortcut
{
public:
    static constexpr const char *Programs = "$(Programs)";

    // 0 for the prefix "." (or none), 1 for "..", -1 for anything else.
    int DirType() const;
    // 0 sets ".", 1 sets ".."; other values change nothing.
    void setDirType(int type);

    bool Make(const QString &folder, const QString &linkName, const QString &target, const QString &arguments,
              bool privateLink, const QString &parentToken);
    bool Remove(const QString &folder, const QString &linkName);

    // Where a link of that folder and name is (or would be) kept.
    static QString linkPath(const QString &folder, const QString &linkName, const QString &parentToken);

private:
    QString m_prefix;
};
