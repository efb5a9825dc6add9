#include "app/SettingsStore.h"
#include "documents/Database.h"
#include "platform/CheckedSaveFile.h"
#include "support/FileBytes.h"

#include <QDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// A save killed between writing and moving its file into place leaves no
// trace that counts: the document stays as it was, the lists never take the
// unfinished file for a document, and the next save clears it away.

namespace {

QString saveDocument(const QString &title, const QDateTime &time)
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.DocumentTitle = title;
    record.Timestamp = time;
    const QString path = Database::NewFileName(time);
    return Database::SaveDocument(path, record, Database::Sequential) ? path : QString();
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

QStringList namesOf(QStringList paths)
{
    for (QString &path : paths)
        path = QFileInfo(path).fileName();
    paths.sort();
    return paths;
}

} // namespace

class TestUnfinishedSaves : public QObject
{
    Q_OBJECT

private slots:
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
        for (const qint32 flags : {0, Database::OnlyText})
            QCOMPARE(namesOf(Database::ListDocuments(flags)), documents);

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
};

QTEST_GUILESS_MAIN(TestUnfinishedSaves)
#include "test_unfinished_saves.moc"
