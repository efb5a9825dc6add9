#include "app/SettingsStore.h"
#include "documents/Database.h"
#include "platform/CheckedSaveFile.h"
#include "platform/IniFile.h"
#include "support/DocumentRecords.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString saveDocument(const QString &title, const QDateTime &time)
{
    const QString path = Database::NewFileName(time);
    return Database::SaveDocument(path, blankDocument(title, time), Database::Sequential) ? path : QString();
}

// A child process starts saving over the document and is killed before the
// move.
bool killWhileSaving(const QString &path)
{
    const pid_t child = ::fork();
    if (child == 0) {
        CheckedSaveFile file(path);
        if (file.open())
            file.write("\"half\",#2001-01-01#\r\n{\\rtf1 cut");
        ::raise(SIGKILL);
        ::_exit(1);
    }
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFSIGNALED(status);
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

using Writer = std::function<bool(const QString &path, const QByteArray &content)>;

} // namespace

// Saving documents and settings: a save that cannot finish leaves the old file
// as it was and nothing that counts beside it.
class TestSaving : public QObject
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
    // A save killed between writing and moving its file into place leaves no
    // trace that counts: the document stays as it was, the lists never take the
    // unfinished file for a document, and the next save clears it away.
    void killedSaveLeavesNoDocumentBehind()
    {
        const QString folder = SettingsStore::DocumentFolder();
        QDir(folder).removeRecursively();
        QVERIFY(QDir().mkpath(folder));
        const QString document = saveDocument(u"元の文書"_s, QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5)));
        QVERIFY(!document.isEmpty());
        // A hidden file of the user's own is still a document.
        QVERIFY(writeFileBytes(folder + u"/.note.TXT"_s, "\"memo\",#2024-01-01#\r\n"));
        const QStringList documents = {u".note.TXT"_s, u"20240102030405.TXT"_s};

        QVERIFY(killWhileSaving(document));
        QStringList leftovers = namesIn(folder);
        leftovers.removeIf([&](const QString &name) { return documents.contains(name); });
        QVERIFY2(!leftovers.isEmpty(), "the kill came after the write: its unfinished file is there");
        QCOMPARE(Database::LoadDocument(document, Database::Sequential).DocumentTitle, u"元の文書"_s);
        for (const qint32 flags : {0, Database::OnlyText}) {
            QStringList listed = Database::ListDocuments(flags);
            listed.sort();
            QCOMPARE(listed, (QStringList{folder + u'/' + documents[0], folder + u'/' + documents[1]}));
        }

        // Made read-only, it still does not stop the next save of the same
        // document, which clears it away.
        QVERIFY(QFile::setPermissions(folder + u'/' + leftovers.first(), QFile::ReadOwner));
        DocumentRecord record = Database::LoadDocument(document, Database::Sequential);
        record.DocumentTitle = u"新しい文書"_s;
        QVERIFY(Database::SaveDocument(document, record, Database::Sequential));
        QCOMPARE(namesIn(folder), documents);
        QCOMPARE(Database::LoadDocument(document, Database::Sequential).DocumentTitle, u"新しい文書"_s);

        // A save of another document clears them too.
        QVERIFY(killWhileSaving(document));
        const QString other = saveDocument(u"別の文書"_s, QDateTime(QDate(2024, 1, 2), QTime(3, 4, 6)));
        QCOMPARE(namesIn(folder), documents + QStringList{QFileInfo(other).fileName()});
    }

    // A disk that fills up part-way: the write fails, and the old file must
    // stay exactly as it was. The disk is "full" because the process may not
    // write files larger than a limit (see FileSizeLimit), which needs no root.
    void oldFileStaysWholeWhenTheDiskFills_data()
    {
        QTest::addColumn<Writer>("writer");
        QTest::addColumn<int>("size");
        const Writer document = [](const QString &path, const QByteArray &content) {
            const QDateTime time(QDate(2024, 1, 2), QTime(3, 4, 5));
            Database::SaveDocument(path, blankDocument(QStringLiteral("満杯"), time, QString::fromLatin1(content)),
                                   Database::Sequential);
            return fileBytes(path).contains(content);
        };
        const Writer settings = [](const QString &path, const QByteArray &content) {
            IniFile ini(path);
            ini.setValue(QStringLiteral("Settings"), QStringLiteral("Text"), QString::fromLatin1(content));
            return ini.save();
        };
        // Under 16 KB a file sits in Qt's buffer until the end; over it, the
        // write itself fails first.
        for (const int size : {200, 40000}) {
            QTest::addRow("document, %d bytes", size) << document << size;
            QTest::addRow("settings, %d bytes", size) << settings << size;
        }
    }

    void oldFileStaysWholeWhenTheDiskFills()
    {
        QFETCH(Writer, writer);
        QFETCH(int, size);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("20240102030405.TXT"));
        const QByteArray old = "the old file, which must stay whole\r\n";
        QVERIFY(writeFileBytes(path, old));
        const QByteArray content(size, 'x');
        bool saved = true;
        {
            FileSizeLimit limit(rlim_t(size / 2));
            saved = writer(path, content);
        }
        QVERIFY(!saved);
        QCOMPARE(fileBytes(path), old);
        // Nothing half-written is left beside it.
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QFileInfo(path).fileName()});

        // With room again the same save goes through.
        QVERIFY(writer(path, content));
        QVERIFY(fileBytes(path).contains(content));
    }

    // The forgiving INI file under the settings and the key store.
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

QTEST_GUILESS_MAIN(TestSaving)
#include "test_saving.moc"
