#include "platform/IniFile.h"
#include "platform/RuntimeLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "platform/CheckedSaveFile.h"

IniFile::IniFile(const QString &path)
    : m_path(path)
{
}

bool IniFile::load()
{
    m_sections.clear();
    QFile file(m_path);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly)) {
        RuntimeLog::note("IniFile", QStringLiteral("cannot read %1: %2").arg(m_path, file.errorString()));
        return false;
    }

    Section *current = nullptr;
    int lineNumber = 0;
    // A settings file is small; anything much larger is not ours to trust.
    const QByteArray bytes = file.read(16 * 1024 * 1024);
    for (const QByteArray &raw : bytes.split('\n')) {
        ++lineNumber;
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            const QString name = line.mid(1, line.size() - 2);
            current = find(name);
            if (!current) {
                m_sections.append({name, {}, {}});
                current = &m_sections.last();
            }
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0 || !current) {
            RuntimeLog::note("IniFile", QStringLiteral("%1:%2: line skipped").arg(m_path).arg(lineNumber));
            continue;
        }
        const QString key = line.left(equals).trimmed();
        const QString value = line.mid(equals + 1).trimmed();
        if (Entry *entry = current->entry(key))
            entry->second = value;
        else
            current->append(key, value);
    }
    return true;
}

bool IniFile::save() const
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    CheckedSaveFile file(m_path);
    if (!file.open()) {
        RuntimeLog::note("IniFile", QStringLiteral("cannot write %1: %2").arg(m_path, file.errorString()));
        return false;
    }
    QByteArray text;
    for (const Section &section : m_sections) {
        text += '[' + section.name.toUtf8() + "]\n";
        for (const Entry &entry : section.entries)
            text += entry.first.toUtf8() + '=' + entry.second.toUtf8() + '\n';
        text += '\n';
    }
    file.write(text);
    if (!file.commit()) {
        RuntimeLog::note("IniFile", QStringLiteral("cannot write %1: %2").arg(m_path, file.errorString()));
        return false;
    }
    return true;
}

IniFile::Section *IniFile::find(const QString &section)
{
    for (Section &candidate : m_sections)
        if (candidate.name.compare(section, Qt::CaseInsensitive) == 0)
            return &candidate;
    return nullptr;
}

const IniFile::Section *IniFile::find(const QString &section) const
{
    return const_cast<IniFile *>(this)->find(section);
}

IniFile::Entry *IniFile::Section::entry(const QString &key)
{
    const auto found = positions.constFind(key.toCaseFolded());
    return found == positions.cend() ? nullptr : &entries[found.value()];
}

void IniFile::Section::append(const QString &key, const QString &value)
{
    positions.insert(key.toCaseFolded(), entries.size());
    entries.append({key, value});
}

void IniFile::Section::reindex()
{
    positions.clear();
    for (qsizetype i = 0; i < entries.size(); ++i)
        positions.insert(entries.at(i).first.toCaseFolded(), i);
}

std::optional<QString> IniFile::value(const QString &section, const QString &key) const
{
    if (Section *found = const_cast<IniFile *>(this)->find(section)) {
        if (const Entry *entry = found->entry(key))
            return entry->second;
    }
    return std::nullopt;
}

void IniFile::setValue(const QString &section, const QString &key, const QString &value)
{
    Section *found = find(section);
    if (!found) {
        m_sections.append({section, {}, {}});
        found = &m_sections.last();
    }
    if (Entry *entry = found->entry(key))
        entry->second = value;
    else
        found->append(key, value);
}

void IniFile::removeValue(const QString &section, const QString &key)
{
    if (Section *found = find(section)) {
        found->entries.removeIf([&](const Entry &entry) { return entry.first.compare(key, Qt::CaseInsensitive) == 0; });
        found->reindex();
    }
}

void IniFile::removeSection(const QString &section)
{
    m_sections.removeIf([&](const Section &candidate) { return candidate.name.compare(section, Qt::CaseInsensitive) == 0; });
}

void IniFile::clear()
{
    m_sections.clear();
}

bool IniFile::hasSection(const QString &section) const
{
    return find(section) != nullptr;
}

QList<IniFile::Entry> IniFile::entries(const QString &section) const
{
    if (const Section *found = find(section))
        return found->entries;
    return {};
}

QStringList IniFile::sections() const
{
    QStringList names;
    for (const Section &section : m_sections)
        names.append(section.name);
    return names;
}
