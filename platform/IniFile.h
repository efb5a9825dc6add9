#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <optional>
#include <utility>

// A small, forgiving INI file: sections and keys are kept with their exact
// spelling (spaces and commas included) and looked up without regard to case,
// as the Windows settings calls do. Lines that cannot be read are skipped and
// logged, never fatal.
class IniFile
{
public:
    using Entry = std::pair<QString, QString>;

    explicit IniFile(const QString &path);

    QString path() const { return m_path; }

    // Reads the file; a missing file is an empty tree. Returns false when the
    // file exists but cannot be read.
    bool load();
    // Writes the whole tree atomically; false when it could not be written.
    bool save() const;

    std::optional<QString> value(const QString &section, const QString &key) const;
    void setValue(const QString &section, const QString &key, const QString &value);
    void removeValue(const QString &section, const QString &key);
    void removeSection(const QString &section);
    void clear();

    bool hasSection(const QString &section) const;
    QList<Entry> entries(const QString &section) const;
    QStringList sections() const;

private:
    struct Section
    {
        QString name;
        QList<Entry> entries;
        // Position of each entry by its key in case-folded form: a key table
        // holds hundreds of keys, each looked up as it is read.
        QHash<QString, qsizetype> positions;

        Entry *entry(const QString &key);
        void append(const QString &key, const QString &value);
        void reindex();
    };

    Section *find(const QString &section);
    const Section *find(const QString &section) const;

    QString m_path;
    QList<Section> m_sections;
};
