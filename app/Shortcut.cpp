#include "app/Shortcut.h"
#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QDir>
#include "platform/CheckedSaveFile.h"

int Shortcut::DirType() const
{
    if (m_prefix.isEmpty() || m_prefix == u".")
        return 0;
    if (m_prefix == u"..")
        return 1;
    return -1;
}

void Shortcut::setDirType(int type)
{
    if (type == 0)
        m_prefix = QStringLiteral(".");
    else if (type == 1)
        m_prefix = QStringLiteral("..");
}

QString Shortcut::linkPath(const QString &folder, const QString &linkName, const QString &parentToken)
{
    const QString parent = parentToken == QLatin1String(Programs) ? XdgPaths::configHome() : parentToken;
    return parent + u'/' + folder + u'/' + linkName + QStringLiteral(".desktop");
}

namespace {

// A desktop entry's values escape backslashes and line breaks; the command
// line quotes the program path, which may hold blanks.
QString escaped(QString value)
{
    return value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\n', QStringLiteral("\\n"));
}

} // namespace

bool Shortcut::Make(const QString &folder, const QString &linkName, const QString &target, const QString &arguments,
                    bool privateLink, const QString &parentToken)
{
    // With no folder name there is no folder to put the link in.
    if (folder.isEmpty() || linkName.isEmpty())
        return false;
    const QString path = linkPath(folder, linkName, parentToken);
    QDir().mkpath(QFileInfo(path).absolutePath());

    QString exec = u'"' + QString(target).replace(u'"', QStringLiteral("\\\"")) + u'"';
    if (!arguments.isEmpty())
        exec += u' ' + arguments;
    const QString entry = QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nPath=%3\n"
                                         "Terminal=false\nX-GNOME-Autostart-enabled=true\n%4")
                              .arg(escaped(linkName), escaped(exec), escaped(QFileInfo(target).absolutePath()),
                                   privateLink ? QStringLiteral("NoDisplay=true\n") : QString());
    CheckedSaveFile file(path);
    if (!file.open()) {
        RuntimeLog::note("Shortcut::Make", file.errorString());
        return false;
    }
    file.write(entry.toUtf8());
    return file.commit();
}

bool Shortcut::Remove(const QString &folder, const QString &linkName)
{
    if (folder.isEmpty() || linkName.isEmpty())
        return false;
    return QFile::remove(linkPath(folder, linkName, QLatin1String(Programs)));
}
