#pragma once

#include <QList>
#include <QString>
#include <utility>

class IniFile;

// The program's own settings tree: application name "Fernwick Nib 2007",
// sections, keys and text values, kept in one per-user INI file
// ($XDG_CONFIG_HOME/Fernwick Nib 2007.ini). Also the loader and saver of the
// settings globals, the "System"/"Runtime" flag, the "Key Settings" list and
// the document folder.
class SettingsStore
{
public:
    static constexpr const char *ApplicationName = "Fernwick Nib 2007";
    // The two sub-folders of the document folder: the maker and the product.
    static constexpr const char *Maker = "Fernwick";
    static constexpr const char *Product = "Nib";

    using KeyPair = std::pair<QString, QString>;

    static QString filePath();

    // GetSetting, SaveSetting, DeleteSetting over the tree.
    static QString get(const QString &section, const QString &key, const QString &defaultValue);
    static void put(const QString &section, const QString &key, const QString &value);

    // Fills the settings globals, then the database settings. A value that does
    // not convert throws, leaving it and every later global untouched.
    static void Load();
    // Writes the settings globals and the database settings back.
    static void Save();

    static bool Runtime();
    static void SetRuntime(bool on);

    // All pairs of "Key Settings"; their number is returned.
    static qint16 KeyList(QList<KeyPair> &pairs);

    // The per-user folder of the documents, made on first use.
    static QString DocumentFolder();

    // Deletes the whole tree of the application name.
    static void Reset();

    // Forgets the cached file, so the next call reads it from disk again.
    static void reload();

private:
    static IniFile &tree();
    static void commit();
};
