#include "app/PrivateCharacters.h"
#include "app/Globals.h"
#include "app/Registry.h"
#include "platform/EudcFontLink.h"
#include "platform/vb/VbLike.h"

#include <QCoreApplication>

QString PrivateCharacters::fontPath(const QString &programFolder)
{
    return programFolder + QStringLiteral("/SKIN/USERFONT/EUDC.TTE");
}

void PrivateCharacters::Link(bool on, const QString &programFolder)
{
    EudcFontLink::Enable(false);

    Registry registry;
    registry.RootKey = Registry::HKEY_CURRENT_USER;
    // Opening creates the key when the user never had one.
    registry.CreateInsert(QString::fromLatin1(Key));
    const QString current = QString::fromLatin1(Current);
    const QString backup = QString::fromLatin1(Backup);

    const QString ours = programFolder + QStringLiteral("/*");

    if (on) {
        // A backup left by a run that did not switch off means the link is
        // already in force: change nothing.
        if (registry.Data(backup).toString().isEmpty()) {
            // Our own font without a backup was left by an older run: it is
            // not the user's, and backing it up would keep it linked for good.
            // The system's default stands in for the user's lost choice.
            if (VbLike::match(registry.Data(current).toString(), ours))
                registry.Delete(QString(), current);
            registry.setData(backup, registry.Data(current).toString());
            registry.setData(current, fontPath(programFolder));
            registry.Save();
        }
    } else {
        // Only a font inside the program folder is ours to take back; the
        // folder's characters are pattern characters, as they always were.
        if (VbLike::match(registry.Data(current).toString(), ours)) {
            registry.setData(current, registry.Data(backup).toString());
            // A backup of our own font, made by an older run, would keep it
            // linked for good: the system's default stands in for it.
            if (VbLike::match(registry.Data(current).toString(), ours))
                registry.Delete(QString(), current);
            registry.Save();
            registry.Delete(QString(), backup);
        }
    }

    const QString configured = registry.Data(current).toString();
    registry.Unload();
    EudcFontLink::Enable(true, configured);
}

void PrivateCharacters::Link(bool on)
{
    const QString folder = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : Globals::InstallPath;
    Link(on, folder);
}
