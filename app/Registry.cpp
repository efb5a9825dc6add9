#include "app/Registry.h"
#include "platform/IniFile.h"
#include "platform/XdgPaths.h"

namespace {

quint32 nextHandle = 0x100;

// Text values are read into a buffer of 2048 characters, NUL included.
constexpr int TextBufferSize = 2048;

QString valueKey(const QString &name)
{
    return name.isEmpty() ? QStringLiteral("@") : name;
}

bool isShellFolders(const QString &section)
{
    return section.compare(QStringLiteral("HKEY_CURRENT_USER\\") + QString::fromLatin1(Registry::ShellFolders),
                           Qt::CaseInsensitive)
        == 0;
}

// The values the desktop itself answers on Linux.
std::optional<QString> shellFolder(const QString &section, const QString &name)
{
    if (!isShellFolders(section))
        return std::nullopt;
    if (name.compare(u"AppData", Qt::CaseInsensitive) == 0)
        return XdgPaths::dataHome();
    if (name.compare(u"Startup", Qt::CaseInsensitive) == 0)
        return XdgPaths::configHome() + QStringLiteral("/autostart");
    return std::nullopt;
}

// The user's private-character font. Windows always names one; a Linux
// user has none until one is chosen, so the per-user fonts folder's
// EUDC.TTE stands in. A link switched on then always keeps a backup, and
// switching it off never gives the program's own font back.
std::optional<QString> defaultPrivateCharacterFont(const QString &section, const QString &name)
{
    if (section.compare(u"HKEY_CURRENT_USER\\EUDC\\932", Qt::CaseInsensitive) != 0
        || name.compare(u"SystemDefaultEUDCFont", Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return XdgPaths::dataHome() + QStringLiteral("/fonts/EUDC.TTE");
}

} // namespace

Registry::Registry() = default;

Registry::~Registry()
{
    Unload();
}

QString Registry::storePath()
{
    return XdgPaths::configHome() + QStringLiteral("/Fernwick/registry.ini");
}

IniFile &Registry::store()
{
    // The file is read again for every key opened, so that two objects (or
    // two processes) never work on stale copies.
    static IniFile file(storePath());
    if (file.path() != storePath())
        file = IniFile(storePath());
    file.load();
    return file;
}

QString Registry::rootName() const
{
    switch (RootKey) {
    // clang-format off
    case HKEY_CLASSES_ROOT: return QStringLiteral("HKEY_CLASSES_ROOT");
    case HKEY_CURRENT_USER: return QStringLiteral("HKEY_CURRENT_USER");
    case HKEY_LOCAL_MACHINE: return QStringLiteral("HKEY_LOCAL_MACHINE");
    default: return QString();
        // clang-format on
    }
}

QString Registry::sectionOf(const QString &keyPath) const
{
    QString path = keyPath;
    while (path.endsWith(u'\\'))
        path.chop(1);
    return path.isEmpty() ? rootName() : rootName() + u'\\' + path;
}

void Registry::Load(QString &keyPath)
{
    if (m_handle != 0 || rootName().isEmpty())
        return;
    const QString section = sectionOf(keyPath);
    // Opening fails for a key that does not exist; the desktop's own shell
    // folders always exist.
    if (!store().hasSection(section) && !isShellFolders(section))
        return;
    m_section = section;
    m_handle = nextHandle++;
}

void Registry::Unload()
{
    m_handle = 0;
    m_section.clear();
}

void Registry::CreateInsert(const QString &keyPath)
{
    if (rootName().isEmpty())
        return;
    const QString section = sectionOf(keyPath);
    IniFile &file = store();
    if (!file.hasSection(section)) {
        // An empty section keeps the key in existence.
        file.setValue(section, QStringLiteral("@"), QString());
        file.removeValue(section, QStringLiteral("@"));
        file.save();
    }
    m_section = section;
    m_handle = nextHandle++;
}

void Registry::Delete(const QString &subKey, const QString &valueName)
{
    if (m_handle == 0)
        return;
    IniFile &file = store();
    if (!subKey.isEmpty()) {
        const QString prefix = m_section + u'\\' + subKey;
        for (const QString &section : file.sections())
            if (section.compare(prefix, Qt::CaseInsensitive) == 0
                || section.startsWith(prefix + u'\\', Qt::CaseInsensitive))
                file.removeSection(section);
    } else {
        file.removeValue(m_section, valueKey(valueName));
    }
    file.save();
}

QVariant Registry::Data(const QString &valueName)
{
    if (m_handle == 0)
        return QVariant();
    const QString section = UseDefaultValue ? m_section + u'\\' + valueName : m_section;
    const QString key = UseDefaultValue ? QStringLiteral("@") : valueKey(valueName);

    std::optional<QString> stored = shellFolder(section, key);
    if (!stored)
        stored = store().value(section, key);
    if (!stored || *stored == u"sz:" || stored->isEmpty())
        if (std::optional<QString> fallback = defaultPrivateCharacterFont(section, key))
            stored = fallback;

    switch (ValueKind) {
    case REG_SZ: {
        if (!stored)
            return QString();
        QString text = *stored;
        if (!UseDefaultValue && text.startsWith(u"dword:")) {
            // The named-value call reports the value's own type.
            ValueKind = REG_DWORD;
            return static_cast<qint32>(text.mid(6).toUInt(nullptr, 16));
        }
        if (text.startsWith(u"sz:"))
            text = text.mid(3);
        const qsizetype nul = text.indexOf(QChar(0));
        if (nul >= 0)
            text.truncate(nul);
        return text.left(TextBufferSize - 1);
    }
    case REG_DWORD: {
        if (!stored || !stored->startsWith(u"dword:"))
            return static_cast<qint32>(0);
        return static_cast<qint32>(stored->mid(6).toUInt(nullptr, 16));
    }
    default:
        return QVariant();
    }
}

void Registry::setData(const QString &valueName, const QVariant &value)
{
    if (m_handle == 0)
        return;
    IniFile &file = store();
    if (UseDefaultValue) {
        file.setValue(m_section + u'\\' + valueName, QStringLiteral("@"), QStringLiteral("sz:") + value.toString());
    } else if (ValueKind == REG_DWORD) {
        file.setValue(m_section, valueKey(valueName),
                      QStringLiteral("dword:%1").arg(static_cast<quint32>(value.toInt()), 8, 16, QLatin1Char('0')));
    } else {
        // Text is kept exactly, also what code page 932 cannot hold: a path
        // through a program folder named "Café" must still lead there.
        const QString text = value.toString();
        file.setValue(m_section, valueKey(valueName), QStringLiteral("sz:") + text);
    }
    file.save();
}

void Registry::Save()
{
    // Every write is already on disk (written whole, then renamed).
}
