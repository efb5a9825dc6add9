#include "app/PrivateCharacters.h"
#include "app/Registry.h"
#include "platform/EudcFontLink.h"

#include <QFile>
#include <QFontDatabase>
#include <QProcess>
#include <QTest>
#include <QTextLayout>

// The private-character link: on at load, off at unload, with the user's own
// font kept in a backup value exactly while the link is on.
class PrivateCharactersTest : public QObject
{
    Q_OBJECT

private:
    const QString programFolder = QStringLiteral(LANTERN_PROGRAM_DIR);

    static QString value(const char *name)
    {
        Registry registry;
        QString key = QString::fromLatin1(PrivateCharacters::Key);
        registry.Load(key);
        return registry.Data(QString::fromLatin1(name)).toString();
    }

    static void setValue(const char *name, const QString &text)
    {
        Registry registry;
        registry.CreateInsert(QString::fromLatin1(PrivateCharacters::Key));
        registry.setData(QString::fromLatin1(name), text);
    }

    static QByteArray configText()
    {
        QFile file(EudcFontLink::configPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void init()
    {
        QFile::remove(Registry::storePath());
        QFile::remove(EudcFontLink::configPath());
    }

    void cleanup()
    {
        EudcFontLink::Enable(false);
    }

    void onKeepsTheUsersFontAndLinksOurs()
    {
        setValue(PrivateCharacters::Current, "/home/user/fonts/MINE.TTE");
        PrivateCharacters::Link(true, programFolder);
        QCOMPARE(value(PrivateCharacters::Backup), QStringLiteral("/home/user/fonts/MINE.TTE"));
        QCOMPARE(value(PrivateCharacters::Current), programFolder + "/SKIN/USERFONT/EUDC.TTE");
        const QByteArray config = configText();
        QVERIFY2(config.contains("<dir>" + programFolder.toUtf8() + "/SKIN/USERFONT</dir>"), config);
        QVERIFY2(config.contains("<string>Lantern Private Characters</string>"), config);

        // A second "on" finds the backup and changes nothing, even when the
        // current value was changed meanwhile.
        setValue(PrivateCharacters::Current, programFolder + "/SKIN/USERFONT/OTHER.TTE");
        PrivateCharacters::Link(true, programFolder);
        QCOMPARE(value(PrivateCharacters::Backup), QStringLiteral("/home/user/fonts/MINE.TTE"));
        QCOMPARE(value(PrivateCharacters::Current), programFolder + "/SKIN/USERFONT/OTHER.TTE");

        PrivateCharacters::Link(false, programFolder);
        QCOMPARE(value(PrivateCharacters::Current), QStringLiteral("/home/user/fonts/MINE.TTE"));
        QCOMPARE(value(PrivateCharacters::Backup), QString());
        // The user's font does not exist here, so nothing is linked any more.
        QVERIFY(!QFile::exists(EudcFontLink::configPath()));
    }

    void offLeavesAFontOutsideTheProgramFolderAlone()
    {
        setValue(PrivateCharacters::Current, "/home/user/fonts/MINE.TTE");
        PrivateCharacters::Link(true, programFolder);
        setValue(PrivateCharacters::Current, "/usr/share/fonts/chosen/USER.TTE");
        PrivateCharacters::Link(false, programFolder);
        QCOMPARE(value(PrivateCharacters::Current), QStringLiteral("/usr/share/fonts/chosen/USER.TTE"));
        QCOMPARE(value(PrivateCharacters::Backup), QStringLiteral("/home/user/fonts/MINE.TTE"));
    }

    void theGlyphsRenderWhileLinked()
    {
        QVERIFY2(QFile::exists(PrivateCharacters::fontPath(programFolder)), "the build draws the font");
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
        QProcess fcList;
        fcList.start("fc-list", {":charset=e000", "family"});
        QVERIFY(fcList.waitForFinished(60000));
        QVERIFY2(fcList.readAllStandardOutput().contains("Lantern Private Characters"), "fc-list does not see the link");

        PrivateCharacters::Link(false, programFolder);
        QVERIFY(!QFile::exists(EudcFontLink::configPath()));
    }
};

QTEST_MAIN(PrivateCharactersTest)
#include "test_private_characters.moc"
