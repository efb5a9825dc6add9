#include "app/SettingsStore.h"
#include "app/DatabaseSettings.h"
#include "app/Globals.h"
#include "app/Registry.h"
#include "platform/IniFile.h"
#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"
#include "platform/vb/VbConvert.h"

#include <QCoreApplication>
#include <QDir>

namespace {

const QString Settings = QStringLiteral("Settings");
const QString SkinSettings = QStringLiteral("Skin Settings");
const QString System = QStringLiteral("System");
const QString KeySettings = QStringLiteral("Key Settings");

// While the saver writes many keys, the file is written once at its end.
bool batching = false;

QString programFolder()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
}

} // namespace

QString SettingsStore::filePath()
{
    return XdgPaths::configHome() + u'/' + QString::fromLatin1(ApplicationName) + QStringLiteral(".ini");
}

IniFile &SettingsStore::tree()
{
    static IniFile *file = nullptr;
    if (!file || file->path() != filePath()) {
        delete file;
        file = new IniFile(filePath());
        file->load();
    }
    return *file;
}

void SettingsStore::reload()
{
    tree().load();
}

void SettingsStore::commit()
{
    if (!batching)
        tree().save();
}

QString SettingsStore::get(const QString &section, const QString &key, const QString &defaultValue)
{
    return tree().value(section, key).value_or(defaultValue);
}

void SettingsStore::put(const QString &section, const QString &key, const QString &value)
{
    tree().setValue(section, key, value);
    commit();
}

void SettingsStore::Load()
{
    using namespace Globals;
    InstallPath = get(Settings, QStringLiteral("Path"), programFolder());
    WallpaperType = VbConvert::toLong(get(SkinSettings, QStringLiteral("Wallpaper Type"), QStringLiteral("0")));
    WallpaperDirectory = get(SkinSettings, QStringLiteral("Wallpaper Directory"), QStringLiteral(".."));
    WallpaperFile = get(SkinSettings, QStringLiteral("Wallpaper File"), QStringLiteral("WELCOME.BMP"));
    MusicOn = VbConvert::toBoolean(get(SkinSettings, QStringLiteral("Music"), QStringLiteral("True")));
    GraphicOn = VbConvert::toBoolean(get(SkinSettings, QStringLiteral("Graphic"), QStringLiteral("True")));
    ShutdownOnQuit = VbConvert::toBoolean(get(Settings, QStringLiteral("Shutdown"), QStringLiteral("False")));
    HowToOn = VbConvert::toBoolean(get(Settings, QStringLiteral("How-to"), QStringLiteral("True")));
    SmartPencilOn = VbConvert::toBoolean(get(Settings, QStringLiteral("Smart Pencil"), QStringLiteral("True")));
    DatabaseSettings::current() = DatabaseSettings::load();
    DatabaseSettings::loaded() = true;
}

void SettingsStore::Save()
{
    using namespace Globals;
    batching = true;
    put(Settings, QStringLiteral("Path"), InstallPath);
    put(SkinSettings, QStringLiteral("Wallpaper Type"), QString::number(WallpaperType));
    put(SkinSettings, QStringLiteral("Wallpaper Directory"), WallpaperDirectory);
    put(SkinSettings, QStringLiteral("Wallpaper File"), WallpaperFile);
    put(SkinSettings, QStringLiteral("Music"), VbConvert::fromBoolean(MusicOn));
    put(SkinSettings, QStringLiteral("Graphic"), VbConvert::fromBoolean(GraphicOn));
    put(Settings, QStringLiteral("Shutdown"), VbConvert::fromBoolean(ShutdownOnQuit));
    put(Settings, QStringLiteral("How-to"), VbConvert::fromBoolean(HowToOn));
    put(Settings, QStringLiteral("Smart Pencil"), VbConvert::fromBoolean(SmartPencilOn));
    // Database settings that were never loaded in this run are left as stored.
    if (DatabaseSettings::loaded())
        DatabaseSettings::save(DatabaseSettings::current());
    batching = false;
    commit();
}

bool SettingsStore::Runtime()
{
    return VbConvert::toBoolean(get(System, QStringLiteral("Runtime"), QStringLiteral("False")));
}

void SettingsStore::SetRuntime(bool on)
{
    put(System, QStringLiteral("Runtime"), VbConvert::fromBoolean(on));
}

qint16 SettingsStore::KeyList(QList<KeyPair> &pairs)
{
    pairs = tree().entries(KeySettings);
    return static_cast<qint16>(pairs.size());
}

QString SettingsStore::DocumentFolder()
{
    Registry registry;
    registry.RootKey = Registry::HKEY_CURRENT_USER;
    QString key = QString::fromLatin1(Registry::ShellFolders);
    registry.Load(key);
    const QString appData = registry.Data(QStringLiteral("AppData")).toString();
    registry.Unload();
    const QString folder = appData + u'/' + QString::fromLatin1(Maker) + u'/' + QString::fromLatin1(Product);
    if (!QDir().mkpath(folder))
        RuntimeLog::note("DocumentFolder", QStringLiteral("cannot create %1").arg(folder));
    return folder;
}

void SettingsStore::Reset()
{
    tree().clear();
    tree().save();
    QFile::remove(filePath());
}
