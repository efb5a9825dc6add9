#include "app/DatabaseSettings.h"
#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "platform/vb/VbError.h"
#include "support/CaseTable.h"
#include "support/FileBytes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

// The settings tree, its defaults, its conversion-error rule and its file.
class SettingsStoreTest : public QObject
{
    Q_OBJECT

    static void writeSettingsFile(const QByteArray &text)
    {
        QVERIFY(writeFileBytes(SettingsStore::filePath(), text));
        SettingsStore::reload();
    }

    // "Music", "Graphic", "Shutdown", "How-to", "Smart Pencil" as T and F, in load order.
    static QString switches()
    {
        using namespace Globals;
        QString flags;
        for (bool on : {MusicOn, GraphicOn, ShutdownOnQuit, HowToOn, SmartPencilOn})
            flags += on ? u'T' : u'F';
        return flags;
    }

private slots:
    void init()
    {
        SettingsStore::Reset();
        using namespace Globals;
        InstallPath.clear();
        WallpaperType = 0;
        WallpaperDirectory.clear();
        WallpaperFile.clear();
        MusicOn = GraphicOn = ShutdownOnQuit = HowToOn = SmartPencilOn = false;
        DatabaseSettings::current() = DatabaseSettings();
        DatabaseSettings::loaded() = false;
    }

    void defaultsAreSavedWithExactSectionsAndKeys()
    {
        SettingsStore::Load();
        QCOMPARE(Globals::InstallPath, QCoreApplication::applicationDirPath());
        QCOMPARE(Globals::WallpaperDirectory, QStringLiteral(".."));
        QVERIFY(DatabaseSettings::loaded());
        Globals::WallpaperType = 5;
        Globals::MusicOn = false;
        SettingsStore::Save();
        QCOMPARE(QFileInfo(SettingsStore::filePath()).fileName(), QStringLiteral("Fernwick Nib 2007.ini"));
        const QByteArray text = fileBytes(SettingsStore::filePath());
        QVERIFY2(text.contains("[Settings]\nPath=" + QCoreApplication::applicationDirPath().toUtf8() + "\n"
                                                                                                       "Shutdown=False\nHow-to=True\nSmart Pencil=True\n"),
                 text);
        QVERIFY2(text.contains("[Skin Settings]\nWallpaper Type=5\nWallpaper Directory=..\nWallpaper File=WELCOME.BMP\n"
                               "Music=False\nGraphic=True\n"),
                 text);
        QVERIFY2(text.contains("[Database Settings]\nPrevious=False\nRecent=\nMore Than=0\n"), text);
    }

    // Every case in tests/data/settings_store: a settings file and what loading it gives.
    void storedTextIsRead_data() { addCaseRows(QStringLiteral("settings_store"), 6); }

    void storedTextIsRead()
    {
        QFETCH(QString, asked);
        writeSettingsFile(asked.toUtf8());
        int raised = 0;
        try {
            SettingsStore::Load();
        } catch (const VbError &e) {
            raised = e.number();
        }
        QCOMPARE(DatabaseSettings::loaded(), raised == 0);
        QTEST(QStringLiteral("%1 %2 %3 %4").arg(raised).arg(switches()).arg(Globals::WallpaperType).arg(Globals::WallpaperFile),
              "answer");
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

    void databaseSettingsNeverLoadedSurviveTheSave()
    {
        writeSettingsFile("[Skin Settings]\nMusic=maybe\n[Database Settings]\nRecent=kept\n");
        QVERIFY_THROWS_EXCEPTION(VbError, SettingsStore::Load());
        QCOMPARE(DatabaseSettings::current().Recent, QString());
        SettingsStore::Save();
        SettingsStore::reload();
        QCOMPARE(SettingsStore::get("Database Settings", "Recent", QString()), QStringLiteral("kept"));
    }

    void runtimeFlagKeyListAndReset()
    {
        QList<SettingsStore::KeyPair> pairs{{"stale", "value"}};
        QCOMPARE(SettingsStore::KeyList(pairs), qint16(0));
        QVERIFY(pairs.isEmpty());
        QCOMPARE(SettingsStore::Runtime(), false);
        SettingsStore::SetRuntime(true);
        QVERIFY(fileBytes(SettingsStore::filePath()).contains("[System]\nRuntime=True\n"));

        writeSettingsFile(fileBytes(SettingsStore::filePath()) + "[Key Settings]\nHiragana,1,1=あ\nAlpha,2,1=B\nRomaji,1,1=a\n");
        QCOMPARE(SettingsStore::Runtime(), true);
        QCOMPARE(SettingsStore::KeyList(pairs), qint16(3));
        QCOMPARE(pairs, QList<SettingsStore::KeyPair>({{"Hiragana,1,1", "あ"}, {"Alpha,2,1", "B"}, {"Romaji,1,1", "a"}}));
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
