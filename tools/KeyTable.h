#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

// What each key of the input pads types, read from the settings section
// "Key Settings": a name "Pad,column,row" with the key's text. The six pad
// names below make key records, kept in the order read (the first record of
// a cell wins); any other name fills the romaji grid (20 columns by 5 rows):
// the letters that make the input method compose a hiragana key's kana.
//
// The table is installed with the program as SKIN/KEYS.INI (made by
// scripts/make-keys-ini.py). The program never writes "Key Settings": a user
// who has none gets the installed table; one who has some gets only theirs.
class KeyTable
{
public:
    enum Pad : qint32 {
        Number = 0,
        Alpha = 11,
        Hiragana = 12,
        Katakana = 13,
        Symbol1 = 14,
        Symbol2 = 15,
        // The handwriting page: a pad without keys, so no pad name in the
        // table; its number is the first free command button index.
        Handwriting = 21,
    };

    struct Record
    {
        qint32 pad = 0;
        qint16 column = 0;
        qint16 row = 0;
        QString text;
    };

    static constexpr int RomajiColumns = 20;
    static constexpr int RomajiRows = 5;

    KeyTable();

    // Replaces the table with these (name, value) pairs.
    void load(const QList<std::pair<QString, QString>> &pairs);
    // The user's "Key Settings", or the installed table when there are none.
    void loadSettings(const QString &installedTable);
    // The installed table beside the program.
    static QString installedTable();

    // The first record of the pad's cell; null when the cell has no key.
    const Record *find(qint32 pad, int column, int row) const;
    QString romaji(int column, int row) const;
    const QList<Record> &records() const { return m_records; }

    // The pad number of a pad name; -1 for any other name.
    static qint32 padNumber(const QString &name);
    // What a key's picture shows for its text ("{+}" shows "+", "~" "改行").
    static QString legend(const QString &text);

private:
    QList<Record> m_records;
    QStringList m_romaji;
};
