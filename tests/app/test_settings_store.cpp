#include "app/DatabaseSettings.h"
#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "platform/vb/VbError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

// The settings tree, its defaults, its conversion-error rule and its file.
class SettingsStoreTest : public QObject
{
    Q_OBJECT

private:
    static void resetGlobals()
    {
        using namespace Globals;
        InstallPath.clear();
        WallpaperType = 0;
        WallpaperDirectory.clear();
        WallpaperFile.clear();
        MusicOn = GraphicOn = ShutdownOnQuit = HowToOn = SmartPencilOn = false;
        DatabaseSettings::current() = DatabaseSettings();
        DatabaseSettings::loaded() = false;
    }

    static void writeSettingsFile(const QByteArray &text)
    {
        QFile file(SettingsStore::filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        SettingsStore::reload();
    }

    static QByteArray settingsFileText()
    {
        QFile file(SettingsStore::filePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void init()
    {
        SettingsStore::Reset();
        resetGlobals();
    }

    void everyDefaultAfterReset()
    {
        SettingsStore::Load();
        using namespace Globals;
        QCOMPARE(InstallPath, QCoreApplication::applicationDirPath());
        QCOMPARE(WallpaperType, 0);
        QCOMPARE(WallpaperDirectory, QStringLiteral(".."));
        QCOMPARE(WallpaperFile, QStringLiteral("WELCOME.BMP"));
        QVERIFY(MusicOn);
        QVERIFY(GraphicOn);
        QVERIFY(!ShutdownOnQuit);
        QVERIFY(HowToOn);
        QVERIFY(SmartPencilOn);
        QVERIFY(DatabaseSettings::loaded());
        QCOMPARE(DatabaseSettings::current().Previous, false);
        QCOMPARE(DatabaseSettings::current().Recent, QString());
        QCOMPARE(DatabaseSettings::current().MoreThan, qint16(0));
    }

    void savedFileSpellsSectionsAndKeysExactly()
    {
        SettingsStore::Load();
        Globals::MusicOn = false;
        Globals::WallpaperType = 5;
        SettingsStore::Save();
        QCOMPARE(QFileInfo(SettingsStore::filePath()).fileName(), QStringLiteral("Fernwick Nib 2007.ini"));
        const QByteArray text = settingsFileText();
        QVERIFY2(text.contains("[Settings]\nPath=" + QCoreApplication::applicationDirPath().toUtf8() + "\n"), text);
        QVERIFY(text.contains("[Skin Settings]\nWallpaper Type=5\nWallpaper Directory=..\nWallpaper File=WELCOME.BMP\n"
                              "Music=False\nGraphic=True\n"));
        QVERIFY(text.contains("Shutdown=False\nHow-to=True\nSmart Pencil=True\n"));
        QVERIFY(text.contains("[Database Settings]\nPrevious=False\nRecent=\nMore Than=0\n"));
    }

    void pathKeepsTheFirstRecordedFolder()
    {
        writeSettingsFile("[Settings]\nPath=/opt/old/lantern\n");
        SettingsStore::Load();
        QCOMPARE(Globals::InstallPath, QStringLiteral("/opt/old/lantern"));
        SettingsStore::Save();
        SettingsStore::reload();
        QCOMPARE(SettingsStore::get("Settings", "Path", QString()), QStringLiteral("/opt/old/lantern"));
    }

    void storedValuesAreRead_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("music");
        QTest::addColumn<qint32>("wallpaperType");
        QTest::newRow("False") << QByteArray("[Skin Settings]\nMusic=False\n") << false << 0;
        QTest::newRow("letter case") << QByteArray("[skin settings]\nmusic=FALSE\nwallpaper type=4\n") << false << 4;
        QTest::newRow("numbers") << QByteArray("[Skin Settings]\nMusic=-1\nWallpaper Type=2.5\n") << true << 2;
    }

    void storedValuesAreRead()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, music);
        writeSettingsFile(file);
        SettingsStore::Load();
        QCOMPARE(Globals::MusicOn, music);
        QTEST(Globals::WallpaperType, "wallpaperType");
    }

    void aValueThatDoesNotConvertEndsTheLoadingThere()
    {
        writeSettingsFile("[Skin Settings]\nMusic=maybe\nGraphic=True\nWallpaper File=SEA.BMP\n"
                          "[Settings]\nShutdown=True\nHow-to=True\nSmart Pencil=True\n"
                          "[Database Settings]\nRecent=kept\n");
        try {
            SettingsStore::Load();
            QFAIL("a setting of \"maybe\" must raise a conversion error");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 13);
        }
        using namespace Globals;
        QCOMPARE(WallpaperFile, QStringLiteral("SEA.BMP"));
        QVERIFY(!MusicOn);
        QVERIFY(!GraphicOn);
        QVERIFY(!ShutdownOnQuit);
        QVERIFY(!HowToOn);
        QVERIFY(!SmartPencilOn);
        QVERIFY(!DatabaseSettings::loaded());
        QCOMPARE(DatabaseSettings::current().Recent, QString());

        // The database settings that were never loaded survive the save.
        SettingsStore::Save();
        SettingsStore::reload();
        QCOMPARE(SettingsStore::get("Database Settings", "Recent", QString()), QStringLiteral("kept"));
        QCOMPARE(SettingsStore::get("Skin Settings", "Music", QString()), QStringLiteral("False"));
    }

    void damagedFilesGiveDefaults_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe[[[\x01=\n=\n\x80\x81", 16);
        QTest::newRow("keys before any section") << QByteArray("Music=False\n[Skin Settings\nGraphic=False\n");
        QTest::newRow("empty") << QByteArray();
    }

    void damagedFilesGiveDefaults()
    {
        QFETCH(QByteArray, file);
        writeSettingsFile(file);
        SettingsStore::Load();
        QVERIFY(Globals::MusicOn);
        QVERIFY(Globals::GraphicOn);
        QCOMPARE(Globals::WallpaperFile, QStringLiteral("WELCOME.BMP"));
    }

    void runtimeFlag()
    {
        QCOMPARE(SettingsStore::Runtime(), false);
        SettingsStore::SetRuntime(true);
        SettingsStore::reload();
        QCOMPARE(SettingsStore::Runtime(), true);
        QVERIFY(settingsFileText().contains("[System]\nRuntime=True\n"));
        SettingsStore::SetRuntime(false);
        QCOMPARE(SettingsStore::Runtime(), false);
    }

    void keyListReadsTheWholeSectionInOrder()
    {
        QList<SettingsStore::KeyPair> pairs{{"stale", "value"}};
        QCOMPARE(SettingsStore::KeyList(pairs), qint16(0));
        QVERIFY(pairs.isEmpty());

        writeSettingsFile("[Key Settings]\nHiragana,1,1=あ\nAlpha,2,1=B\nRomaji,1,1=a\n");
        QCOMPARE(SettingsStore::KeyList(pairs), qint16(3));
        QCOMPARE(pairs.at(0), SettingsStore::KeyPair("Hiragana,1,1", "あ"));
        QCOMPARE(pairs.at(1), SettingsStore::KeyPair("Alpha,2,1", "B"));
        QCOMPARE(pairs.at(2), SettingsStore::KeyPair("Romaji,1,1", "a"));
    }

    void documentFolderIsMadeUnderTheDataFolder()
    {
        const QString expected = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/Fernwick/Nib");
        QDir(expected).removeRecursively();
        QCOMPARE(SettingsStore::DocumentFolder(), expected);
        QVERIFY(QFileInfo(expected).isDir());
    }

    void resetDeletesEverySection()
    {
        writeSettingsFile("[Settings]\nShutdown=True\n[Key Settings]\nAlpha,1,1=A\n[System]\nRuntime=True\n"
                          "[Database Settings]\nRecent=x\n");
        SettingsStore::Reset();
        QVERIFY(!QFile::exists(SettingsStore::filePath()));
        SettingsStore::reload();
        QList<SettingsStore::KeyPair> pairs;
        QCOMPARE(SettingsStore::KeyList(pairs), qint16(0));
        QCOMPARE(SettingsStore::Runtime(), false);
        QCOMPARE(SettingsStore::get("Database Settings", "Recent", "none"), QStringLiteral("none"));
    }

    void anUnusableConfigFolderLosesTheSaveButNeverCrashes()
    {
        // A folder below a plain file can never be made, not even by root.
        const QByteArray saved = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", "/dev/null/config");
        SettingsStore::Load();
        QVERIFY(Globals::MusicOn);
        Globals::MusicOn = false;
        SettingsStore::Save();
        SettingsStore::SetRuntime(true);
        QCOMPARE(SettingsStore::Runtime(), true);
        qputenv("XDG_CONFIG_HOME", saved);
        SettingsStore::reload();
        QCOMPARE(SettingsStore::get("Skin Settings", "Music", "unset"), QStringLiteral("unset"));
    }
};

QTEST_GUILESS_MAIN(SettingsStoreTest)
#include "test_settings_store.moc"
