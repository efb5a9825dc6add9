#include "platform/IniFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The forgiving INI file under the settings and the key store.
class IniFileTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsSpellingAndLooksUpWithoutCase()
    {
        QTemporaryDir dir;
        IniFile file(dir.filePath("a.ini"));
        QVERIFY(file.load());
        file.setValue("Skin Settings", "Wallpaper Type", "3");
        file.setValue("Key Settings", "Hiragana,1,2", "い");
        file.setValue("skin settings", "WALLPAPER TYPE", "4");
        QVERIFY(file.save());

        QFile raw(dir.filePath("a.ini"));
        QVERIFY(raw.open(QIODevice::ReadOnly));
        QCOMPARE(raw.readAll(), QByteArray("[Skin Settings]\nWallpaper Type=4\n\n[Key Settings]\nHiragana,1,2=\xe3\x81\x84\n\n"));

        IniFile again(dir.filePath("a.ini"));
        QVERIFY(again.load());
        QCOMPARE(again.value("SKIN SETTINGS", "wallpaper type").value_or(""), QStringLiteral("4"));
        QCOMPARE(again.entries("Key Settings").size(), 1);
        QVERIFY(!again.value("Skin Settings", "Missing").has_value());
    }

    void skipsLinesItCannotRead()
    {
        QTemporaryDir dir;
        QFile raw(dir.filePath("b.ini"));
        QVERIFY(raw.open(QIODevice::WriteOnly));
        raw.write("orphan=1\n[A]\n; comment\nnot a pair\nk=v=w\n[A]\nk2 = spaced \n\xff\xfe\n");
        raw.close();
        IniFile file(dir.filePath("b.ini"));
        QVERIFY(file.load());
        QCOMPARE(file.sections(), QStringList{"A"});
        QCOMPARE(file.value("A", "k").value_or(""), QStringLiteral("v=w"));
        QCOMPARE(file.value("A", "k2").value_or(""), QStringLiteral("spaced"));
        QVERIFY(!file.value("A", "orphan").has_value());
    }

    void removesValuesAndSections()
    {
        QTemporaryDir dir;
        IniFile file(dir.filePath("c.ini"));
        file.setValue("A", "x", "1");
        file.setValue("A", "y", "2");
        file.setValue("B", "z", "3");
        file.removeValue("a", "X");
        file.removeSection("b");
        QCOMPARE(file.sections(), QStringList{"A"});
        QCOMPARE(file.entries("A"), QList<IniFile::Entry>{IniFile::Entry("y", "2")});
    }
};

QTEST_GUILESS_MAIN(IniFileTest)
#include "test_ini_file.moc"
