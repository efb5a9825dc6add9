#include "platform/IniFile.h"
#include "support/FileBytes.h"

#include <QTemporaryDir>
#include <QTest>

// The forgiving INI file under the settings and the key store.
class IniFileTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString write(const QByteArray &text)
    {
        const QString path = m_dir.filePath(QStringLiteral("a.ini"));
        return writeFileBytes(path, text) ? path : QString();
    }

private slots:
    void keepsSpellingAndLooksUpWithoutCase()
    {
        const QString path = write({});
        IniFile file(path);
        QVERIFY(file.load());
        file.setValue("Skin Settings", "Wallpaper Type", "3");
        file.setValue("Key Settings", "Hiragana,1,2", "い");
        file.setValue("skin settings", "WALLPAPER TYPE", "4");
        file.setValue("Gone", "x", "1");
        file.setValue("Key Settings", "Gone", "1");
        file.removeValue("key settings", "GONE");
        file.removeSection("gone");
        QVERIFY(file.save());
        QCOMPARE(fileBytes(path), QByteArray("[Skin Settings]\nWallpaper Type=4\n\n[Key Settings]\nHiragana,1,2=\xe3\x81\x84\n\n"));

        IniFile again(path);
        QVERIFY(again.load());
        QCOMPARE(again.value("SKIN SETTINGS", "wallpaper type").value_or(""), QStringLiteral("4"));
        QCOMPARE(again.entries("Key Settings"), QList<IniFile::Entry>{IniFile::Entry("Hiragana,1,2", "い")});
        QVERIFY(!again.value("Skin Settings", "Missing").has_value());
    }

    void skipsLinesItCannotRead()
    {
        IniFile file(write("orphan=1\n[A]\n; comment\nnot a pair\nk=v=w\n[A]\nk2 = spaced \n\xff\xfe\n"));
        QVERIFY(file.load());
        QCOMPARE(file.sections(), QStringList{"A"});
        QCOMPARE(file.entries("A"), (QList<IniFile::Entry>{IniFile::Entry("k", "v=w"), IniFile::Entry("k2", "spaced")}));
        QVERIFY(!file.value("A", "orphan").has_value());
    }
};

QTEST_GUILESS_MAIN(IniFileTest)
#include "test_ini_file.moc"
