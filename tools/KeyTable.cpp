#include "tools/KeyTable.h"
#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "platform/IniFile.h"
#include "platform/RuntimeLog.h"

#include <QCoreApplication>
#include <QDir>

KeyTable::KeyTable()
    : m_romaji(RomajiColumns * RomajiRows)
{
}

qint32 KeyTable::padNumber(const QString &name)
{
    static const QList<std::pair<QString, qint32>> pads = {
        // clang-format off
        {QStringLiteral("Number"), Number},     {QStringLiteral("Alpha"), Alpha},
        {QStringLiteral("Hiragana"), Hiragana}, {QStringLiteral("Katakana"), Katakana},
        {QStringLiteral("Symbol 1"), Symbol1},  {QStringLiteral("Symbol 2"), Symbol2},
    };
    // clang-format on
    for (const auto &[padName, number] : pads)
        if (padName == name)
            return number;
    return -1;
}

void KeyTable::load(const QList<std::pair<QString, QString>> &pairs)
{
    m_records.clear();
    m_romaji = QStringList(RomajiColumns * RomajiRows);
    for (const auto &[name, value] : pairs) {
        const qsizetype first = name.indexOf(u',');
        const QString padName = first < 0 ? name : name.left(first);
        const QString place = first < 0 ? QString() : name.mid(first + 1);
        const qsizetype second = place.indexOf(u',');
        const int column = (second < 0 ? place : place.left(second)).trimmed().toInt();
        const int row = second < 0 ? 0 : place.mid(second + 1).trimmed().toInt();
        const qint32 pad = padNumber(padName);
        if (pad >= 0) {
            m_records.append({pad, qint16(column), qint16(row), value});
        } else if (column >= 1 && column <= RomajiColumns && row >= 1 && row <= RomajiRows) {
            m_romaji[(row - 1) * RomajiColumns + (column - 1)] = value;
        } else {
            RuntimeLog::note("KeyTable", QStringLiteral("key \"%1\" is outside the romaji grid").arg(name));
        }
    }
}

QString KeyTable::installedTable()
{
    const QString folder = Globals::InstallPath.isEmpty() ? QCoreApplication::applicationDirPath()
                                                          : Globals::InstallPath;
    return QDir(folder).filePath(QStringLiteral("SKIN/KEYS.INI"));
}

void KeyTable::loadSettings(const QString &installedTable)
{
    QList<SettingsStore::KeyPair> pairs;
    if (SettingsStore::KeyList(pairs) == 0) {
        IniFile installed(installedTable);
        if (!installed.load() || !installed.hasSection(QStringLiteral("Key Settings")))
            RuntimeLog::note("KeyTable", QStringLiteral("no key table in %1").arg(installedTable));
        pairs = installed.entries(QStringLiteral("Key Settings"));
    }
    load(pairs);
}

const KeyTable::Record *KeyTable::find(qint32 pad, int column, int row) const
{
    for (const Record &record : m_records)
        if (record.pad == pad && record.column == column && record.row == row)
            return &record;
    return nullptr;
}

QString KeyTable::romaji(int column, int row) const
{
    if (column < 1 || column > RomajiColumns || row < 1 || row > RomajiRows)
        return {};
    return m_romaji.at((row - 1) * RomajiColumns + (column - 1));
}

QString KeyTable::legend(const QString &text)
{
    if (text == QStringLiteral("~") || text.compare(QStringLiteral("{ENTER}"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("改行");
    if (text.compare(QStringLiteral("{BACKSPACE}"), Qt::CaseInsensitive) == 0
        || text.compare(QStringLiteral("{BS}"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("BS");
    if (text.size() == 3 && text.startsWith(u'{') && text.endsWith(u'}'))
        return text.mid(1, 1);
    return text;
}
