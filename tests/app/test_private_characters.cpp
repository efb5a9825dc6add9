#include "app/PrivateCharacters.h"
#include "app/Registry.h"
#include "platform/EudcFontLink.h"
#include "support/EudcValues.h"
#include "support/FileBytes.h"
#include "support/ToolOutput.h"

#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QTemporaryDir>
#include <QTest>
#include <QTextLayout>

// The private-character link: on at load, off at unload, with the user's own
// font kept in a backup value exactly while the link is on.
class PrivateCharactersTest : public QObject
{
    Q_OBJECT

    const QString programFolder = QStringLiteral(LANTERN_PROGRAM_DIR);
    const QString mine = QStringLiteral("/home/user/fonts/MINE.TTE");

    static void setCurrent(const QString &text)
    {
        Registry registry;
        registry.CreateInsert(QStringLiteral("EUDC\\932"));
        registry.setData("SystemDefaultEUDCFont", text);
    }

private slots:
    void init()
    {
        QFile::remove(Registry::storePath());
        QFile::remove(EudcFontLink::configPath());
    }

    void cleanup() { EudcFontLink::Enable(false); }

    void onKeepsTheUsersFontAndLinksOurs_data()
    {
        QTest::addColumn<QString>("folderName");
        QTest::newRow("the build's program folder") << QString();
        // "é" has no place in code page 932.
        QTest::newRow("a folder named outside code page 932") << QStringLiteral("Lanterne é");
    }

    void onKeepsTheUsersFontAndLinksOurs()
    {
        QFETCH(QString, folderName);
        QTemporaryDir root;
        const QString programFolder = folderName.isEmpty() ? this->programFolder : root.filePath(folderName);
        if (!folderName.isEmpty()) {
            QVERIFY(QDir().mkpath(programFolder + "/SKIN/USERFONT"));
            QVERIFY(QFile::copy(PrivateCharacters::fontPath(this->programFolder), PrivateCharacters::fontPath(programFolder)));
        }
        setCurrent(mine);
        PrivateCharacters::Link(true, programFolder);
        QCOMPARE(eudcValues(), QStringList({programFolder + "/SKIN/USERFONT/EUDC.TTE", mine}));
        const QByteArray text = fileBytes(EudcFontLink::configPath());
        QVERIFY2(text.contains("<dir>" + programFolder.toUtf8() + "/SKIN/USERFONT</dir>"), text);
        QVERIFY2(text.contains("<string>Lantern Private Characters</string>"), text);

        // A second "on" finds the backup and changes nothing.
        setCurrent(programFolder + "/SKIN/USERFONT/OTHER.TTE");
        PrivateCharacters::Link(true, programFolder);
        QCOMPARE(eudcValues(), QStringList({programFolder + "/SKIN/USERFONT/OTHER.TTE", mine}));

        PrivateCharacters::Link(false, programFolder);
        QCOMPARE(eudcValues(), QStringList({mine, QString()}));
        // The user's font does not exist here, so nothing is linked any more.
        QVERIFY(!QFile::exists(EudcFontLink::configPath()));
    }

    // Whatever the key store held, switching on twice changes it once, and
    // switching off leaves no link of ours behind.
    void noLinkOutlivesTheProgram_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("backup");
        const QString ours = programFolder + "/SKIN/USERFONT/EUDC.TTE";
        QTest::newRow("the user never chose a font") << QString() << QString();
        QTest::newRow("an empty font") << QString("") << QString("");
        QTest::newRow("our font left without a backup") << ours << QString("");
        QTest::newRow("our font backed up as the user's") << ours << ours;
    }

    void noLinkOutlivesTheProgram()
    {
        QFETCH(QString, stored);
        QFETCH(QString, backup);
        const QString systemDefault = qEnvironmentVariable("XDG_DATA_HOME") + "/fonts/EUDC.TTE";
        if (!stored.isNull())
            setCurrent(stored);
        if (!backup.isNull()) {
            Registry registry;
            registry.CreateInsert(QStringLiteral("EUDC\\932"));
            registry.setData("~SystemDefaultEUDCFont", backup);
        }
        PrivateCharacters::Link(true, programFolder);
        const QByteArray once = fileBytes(Registry::storePath());
        QVERIFY(QFile::exists(EudcFontLink::configPath()));
        PrivateCharacters::Link(true, programFolder);
        QCOMPARE(fileBytes(Registry::storePath()), once);
        PrivateCharacters::Link(false, programFolder);
        QCOMPARE(eudcValues(), QStringList({systemDefault, QString()}));
        QVERIFY(!QFile::exists(EudcFontLink::configPath()));
    }

    void offLeavesAFontOutsideTheProgramFolderAlone()
    {
        setCurrent(mine);
        PrivateCharacters::Link(true, programFolder);
        setCurrent("/usr/share/fonts/chosen/USER.TTE");
        PrivateCharacters::Link(false, programFolder);
        QCOMPARE(eudcValues(), QStringList({"/usr/share/fonts/chosen/USER.TTE", mine}));
    }

    void theFontIsTrueType()
    {
        // Pango and HarfBuzz draw TrueType and OpenType outlines only, whatever
        // the file is called: the sfnt version of TrueType is 0x00010000.
        const QByteArray font = fileBytes(PrivateCharacters::fontPath(programFolder));
        QCOMPARE(font.left(4), QByteArray("\0\1\0\0", 4));
    }

    void theGlyphsRenderWhileLinked()
    {
        PrivateCharacters::Link(true, programFolder);
        QVERIFY(QFontDatabase::families().contains("Lantern Private Characters"));
        // In this program: a heart typed in the editor's face falls back to ours.
        QTextLayout layout(QString(QChar(0xE000)), QFont("Noto Sans CJK JP", 24));
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const QList<QGlyphRun> runs = layout.glyphRuns();
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs.first().rawFont().familyName(), QStringLiteral("Lantern Private Characters"));
        // In other programs of the session: fontconfig finds it for the code point.
        const QString listed = toolOutput(QStringLiteral("fc-list"), {QStringLiteral(":charset=e000"), QStringLiteral("family")}, 60000);
        QVERIFY2(listed.contains("Lantern Private Characters"), "fc-list does not see the link");
    }
};

QTEST_MAIN(PrivateCharactersTest)
#include "test_private_characters.moc"
