// Any bytes as the settings file: reading it never crashes, a value that does
// not convert only stops the load, and what the program saves afterwards
// always loads again without a fault, the same as it was saved.
// Fuzz library: lantern_core

#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "platform/vb/VbError.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

struct Snapshot
{
    QString wallpaperDirectory;
    QString wallpaperFile;
    long wallpaperType = 0;
    bool music = false;
    bool shutdown = false;

    static Snapshot now()
    {
        using namespace Globals;
        return {WallpaperDirectory, WallpaperFile, long(WallpaperType), MusicOn, ShutdownOnQuit};
    }
    bool operator==(const Snapshot &) const = default;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir folder;
    static const bool placed = qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    Q_UNUSED(placed);

    QFile file(SettingsStore::filePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();

    SettingsStore::reload();
    try {
        SettingsStore::Load();
    } catch (const VbError &) {
        // A value that does not convert: the globals keep what they held.
    }
    QList<SettingsStore::KeyPair> keys;
    SettingsStore::KeyList(keys);

    SettingsStore::Save();
    const Snapshot saved = Snapshot::now();
    SettingsStore::reload();
    try {
        SettingsStore::Load();
    } catch (const VbError &) {
        abort();
    }
    if (!(Snapshot::now() == saved))
        abort();
    return 0;
}
