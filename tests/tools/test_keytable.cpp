#include "platform/CodePage932.h"
#include "platform/IniFile.h"
#include "tools/KeyTable.h"

#include <QTest>

// The key table: reading "Key Settings" names, the romaji grid, and the
// table installed with the program.
class TestKeyTable : public QObject
{
    Q_OBJECT

private slots:
    void namesAreCutIntoPadColumnAndRow()
    {
        KeyTable table;
        table.load({
            {QStringLiteral("Symbol 1,3,2"), QStringLiteral("★")},
            {QStringLiteral("Number,1,5"), QStringLiteral("~")},
            {QStringLiteral("Hiragana,2,1"), QStringLiteral("か")},
            {QStringLiteral("Hiragana,2,1"), QStringLiteral("が")},
            {QStringLiteral("hiragana,2,1"), QStringLiteral("ka")}, // not a pad name: romaji
            {QStringLiteral("Romaji,20,5"), QStringLiteral("xx")},
            {QStringLiteral("Romaji,21,1"), QStringLiteral("lost")}, // outside the grid
            {QStringLiteral("Alpha"), QStringLiteral("no place")},
        });
        QCOMPARE(table.records().size(), 5);
        const KeyTable::Record &first = table.records().first();
        QCOMPARE(std::tuple(first.pad, first.column, first.row), std::tuple(14, qint16(3), qint16(2)));
        QCOMPARE(std::pair(table.find(KeyTable::Hiragana, 2, 1)->text, table.find(KeyTable::Number, 1, 5)->text),
                 std::pair(QStringLiteral("か"), QStringLiteral("~")));
        QVERIFY(!table.find(KeyTable::Katakana, 2, 1));
        QCOMPARE(table.find(KeyTable::Alpha, 0, 0)->text, QStringLiteral("no place")); // no press reaches it
        QCOMPARE((QStringList{table.romaji(2, 1), table.romaji(20, 5), table.romaji(1, 1), table.romaji(21, 1)}),
                 (QStringList{"ka", "xx", "", ""}));
        table.load({});
        QVERIFY(table.records().isEmpty() && table.romaji(2, 1).isEmpty());
    }

    void legends()
    {
        const QList<std::pair<QString, QString>> legends = {
            {"あ", "あ"}, {"{+}", "+"}, {"~", "改行"}, {"{BACKSPACE}", "BS"}, {"00", "00"}};
        for (const auto &[text, legend] : legends)
            QCOMPARE(KeyTable::legend(text), legend);
    }

    // Every pad is filled, within its valid cells, with characters a
    // document can keep, and every hiragana key but a few brackets has romaji.
    void theInstalledTable()
    {
        IniFile file(QStringLiteral(LANTERN_PROGRAM_DIR "/SKIN/KEYS.INI"));
        file.load();
        KeyTable table;
        table.load(file.entries(QStringLiteral("Key Settings")));
        QMap<qint32, int> perPad;
        const QStringList withoutRomaji = {QStringLiteral("『"), QStringLiteral("』"), QStringLiteral("※")};
        for (const KeyTable::Record &key : table.records()) {
            ++perPad[key.pad];
            QVERIFY2(key.row >= 1 && key.row <= 5, qPrintable(key.text));
            QVERIFY2(key.column >= 1 && key.column <= (key.pad == 0 ? 4 : 20), qPrintable(key.text));
            QVERIFY2(key.pad != KeyTable::Alpha || key.column != 16, qPrintable(key.text));
            QVERIFY2(table.find(key.pad, key.column, key.row) == &key, "two keys share a cell");
            bool encodable = true;
            if (key.pad != KeyTable::Number)
                CodePage932::encode(key.text, &encodable);
            QVERIFY2(encodable, qPrintable(key.text));
            if (key.pad == KeyTable::Hiragana)
                QCOMPARE(table.romaji(key.column, key.row).isEmpty(), withoutRomaji.contains(key.text));
        }
        for (qint32 pad : {KeyTable::Number, KeyTable::Alpha, KeyTable::Hiragana, KeyTable::Katakana, KeyTable::Symbol1, KeyTable::Symbol2})
            QVERIFY2(perPad.value(pad) > 0, qPrintable(QString::number(pad)));
    }
};

QTEST_APPLESS_MAIN(TestKeyTable)
#include "test_keytable.moc"
