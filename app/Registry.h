#pragma once

#include <QString>
#include <QVariant>

class IniFile;

// A thin wrapper over a registry key store, one open key at a time. On Linux
// the keys live in a per-user file ($XDG_CONFIG_HOME/Fernwick/registry.ini);
// the "Shell Folders" values "AppData" and "Startup" answer the XDG data folder
// and the autostart folder, and "SystemDefaultEUDCFont" of "EUDC\932", when
// missing or empty, the per-user fonts folder's EUDC.TTE. No operation reports
// an error: a failed call leaves the handle or the result empty.
class Registry
{
public:
    static constexpr quint32 HKEY_CLASSES_ROOT = 0x80000000;
    static constexpr quint32 HKEY_CURRENT_USER = 0x80000001;
    static constexpr quint32 HKEY_LOCAL_MACHINE = 0x80000002;

    static constexpr qint32 REG_SZ = 1;
    static constexpr qint32 REG_DWORD = 4;

    static constexpr const char *ShellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

    Registry();
    ~Registry();
    Registry(const Registry &) = delete;
    Registry &operator=(const Registry &) = delete;

    quint32 RootKey = HKEY_CURRENT_USER;
    qint32 ValueKind = REG_SZ;
    bool UseDefaultValue = false;

    quint32 Handle() const { return m_handle; }

    void Load(QString &keyPath);
    void Unload();
    void CreateInsert(const QString &keyPath);
    void Delete(const QString &subKey, const QString &valueName);
    QVariant Data(const QString &valueName);
    void setData(const QString &valueName, const QVariant &value);
    void Save();

    static QString storePath();

private:
    QString rootName() const;
    QString sectionOf(const QString &keyPath) const;
    static IniFile &store();

    quint32 m_handle = 0;
    QString m_section;
};
