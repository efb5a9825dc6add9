#include "documents/Database.h"
#include "platform/FileAttributes.h"
#include "platform/vb/VbError.h"
#include "support/DocumentRecords.h"
#include "support/FileBytes.h"
#include "support/GoldenRows.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

// The document store against files in the test's own document folder. Each
// tests/data/database/<case>.TXT reads as the record in <case>.json; when that
// names a "from" record (fields it leaves out are the ones read), saving that
// record writes the .TXT byte for byte.
namespace {

QString folder() { return QDir::cleanPath(qEnvironmentVariable("XDG_DATA_HOME") + "/Fernwick/Nib"); }

QString writeRaw(const QString &name, const QByteArray &bytes)
{
    const QString path = folder() + '/' + name;
    if (!writeFileBytes(path, bytes))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QDateTime at(int y, int mo, int d, int h = 0, int mi = 0, int s = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::LocalTime);
}

// Null, as for an unreadable date, is no time.
QDateTime timeOf(const QJsonValue &value)
{
    return QDateTime::fromString(value.toString(), "yyyy-MM-dd HH:mm:ss");
}

void verifyBlank(const DocumentRecord &record)
{
    QCOMPARE(record.DocumentTitle + record.page(1).item(1).Text, QString());
    QVERIFY(!record.Timestamp.isValid());
    QCOMPARE(QList<int>({record.PageCount, record.page(1).ItemCount, record.Zoom}), QList<int>({1, 1, 100}));
}

} // namespace

class TestDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir dir(folder());
        // Read-only leftovers of an earlier case must not stop the clean-up.
        for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden))
            QFile(dir.filePath(name)).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        dir.removeRecursively();
        QDir().mkpath(folder());
    }

    void newDocumentIsTheA4WritingAreaOnlyForTemplate1000()
    {
        const DocumentRecord record = Database::NewDocument(1000);
        QCOMPARE(QList<int>({record.PaperSetting1, record.PaperSetting2, record.PaperSetting3, record.PaperSetting4,
                             record.PaperSetting5, record.Copies, record.Zoom, record.PageCount}),
                 QList<int>({10, 7, 1, 1, -3, 1, 100, 1}));
        QCOMPARE(record.Pages.size(), 1);
        QCOMPARE(record.page(1).Items.size(), 1);
        const DocumentItem &box = record.page(1).item(1);
        QCOMPARE(QList<float>({box.Left, box.Top, box.Width, box.Height}), QList<float>({1.5f, 2.0f, 18.0f, 25.7f}));
        QCOMPARE(QList<int>({box.Unit, box.Reserved1, box.Flags1, box.Flags2, box.Kind}), QList<int>({0, 0, 0, 0, 5}));
        verifyBlank(record);

        const DocumentRecord other = Database::NewDocument(999);
        QCOMPARE(other.PageCount, 1);
        QCOMPARE(other.page(1).ItemCount, 0);
        QVERIFY(other.page(1).Items.isEmpty());
        QCOMPARE(other.PaperSetting5, -3);
        QVERIFY_THROWS_EXCEPTION(VbError, other.page(1).item(1));

        // Saved, a page without boxes has its header and no body line.
        DocumentRecord titled = other;
        titled.DocumentTitle = "t";
        titled.Timestamp = at(2009, 4, 1, 9, 30, 15);
        QVERIFY(Database::SaveDocument(folder() + "/empty.TXT", titled, 2));
        QCOMPARE(fileBytes(folder() + "/empty.TXT"), QByteArray("\"t\",#2009-04-01 09:30:15#\r\n"));
    }

    void fileReadsAsItsRecordAndTheRecordWritesIt_data() { addGoldenRows(QStringLiteral("database"), QStringLiteral("TXT")); }

    void fileReadsAsItsRecordAndTheRecordWritesIt()
    {
        QFETCH(QString, file);
        QJsonObject fields = QJsonDocument::fromJson(fileBytes(goldenBeside(file, QStringLiteral("json")))).object();
        QVERIFY(!fields.isEmpty());
        bool readable = false;
        const DocumentRecord loaded = Database::LoadDocument(file, 2, &readable);
        QVERIFY(readable);
        QCOMPARE(loaded.DocumentTitle, fields["title"].toString());
        QCOMPARE(loaded.Timestamp, timeOf(fields["time"]));
        QCOMPARE(loaded.page(1).item(1).Text, fields["text"].toString());
        const Database::Header header = Database::ReadHeader(file);
        QCOMPARE(header.DocumentTitle, loaded.DocumentTitle);
        QCOMPARE(header.Timestamp, loaded.Timestamp);

        if (!fields.contains("from"))
            return;
        const QJsonObject from = fields["from"].toObject();
        for (auto it = from.begin(); it != from.end(); ++it)
            fields[it.key()] = it.value();
        const QString path = folder() + "/20090401093015.TXT";
        const DocumentRecord record = blankDocument(fields["title"].toString(), timeOf(fields["time"]), fields["text"].toString());
        QVERIFY(Database::SaveDocument(path, record, 2));
        QCOMPARE(fileBytes(path), fileBytes(file));
    }

    void onlyTitleTimeAndFirstBoxAreKept()
    {
        const QString text = "{\\rtf1 " + QString(5000, 'x') + "}";
        DocumentRecord record = blankDocument("旅行の計画", at(2009, 4, 1, 9, 30, 15), text);
        record.Zoom = 150;
        record.Copies = 3;
        record.PaperSetting1 = 9;
        record.page(1).item(1).Left = 4.0f;
        record.page(1).Items.append(record.page(1).item(1));
        record.page(1).item(2).Text = "second box";
        record.page(1).ItemCount = 2;
        record.Pages.append(record.page(1));
        record.PageCount = 2;

        const QString path = folder() + "/20090401093015.TXT";
        QVERIFY(Database::SaveDocument(path, record, 2));
        // A long body is one line: nothing wraps it.
        QCOMPARE(fileBytes(path).count("\r\n"), 2);
        const DocumentRecord loaded = Database::LoadDocument(path, 2);
        QCOMPARE(std::pair(loaded.DocumentTitle, loaded.page(1).item(1).Text), std::pair(record.DocumentTitle, text));
        // Everything else comes back blank.
        QCOMPARE(QList<int>({loaded.Zoom, loaded.Copies, loaded.PaperSetting1, loaded.PageCount, loaded.page(1).ItemCount}),
                 QList<int>({100, 1, 10, 1, 1}));
        QCOMPARE(loaded.page(1).item(1).Left, 1.5f);
    }

    void unreadableFilesLoadAsTheBlankDocument()
    {
        QDir().mkpath(folder() + "/folder.TXT");
        QStringList paths{folder() + "/missing.TXT", folder() + "/folder.TXT"};
        if (::geteuid() != 0) {
            paths << writeRaw("locked.TXT", "\"Secret\",#2009-04-01#\r\nx\r\n");
            QFile::setPermissions(paths.last(), {});
        }
        for (const QString &path : paths) {
            bool readable = true;
            verifyBlank(Database::LoadDocument(path, 2, &readable));
            QVERIFY2(!readable, qPrintable(path));
            QCOMPARE(Database::ReadHeader(path).DocumentTitle, QString());
        }
    }

    void newFileNameIsTheSaveSecond()
    {
        const QDateTime first(QDate(2009, 4, 1), QTime(9, 30, 15, 10));
        const QDateTime second(QDate(2009, 4, 1), QTime(9, 30, 15, 990));
        QCOMPARE(Database::NewFileName(first), folder() + "/20090401093015.TXT");
        QCOMPARE(Database::NewFileName(second), Database::NewFileName(first));

        // The second save of that second replaces the first.
        Database::SaveDocument(Database::NewFileName(first), blankDocument("first", first, "1"), 2);
        Database::SaveDocument(Database::NewFileName(second), blankDocument("second", second, "2"), 2);
        QCOMPARE(Database::ListDocuments(0), QStringList{folder() + "/20090401093015.TXT"});
        QCOMPARE(Database::LoadDocument(folder() + "/20090401093015.TXT", 2).DocumentTitle, QString("second"));
    }

    void listingFlagsPickNamesAndAttributes()
    {
        const QByteArray doc("\"x\",#2009-04-01#\r\n\r\n");
        const QString plain = writeRaw("plain.TXT", doc), lower = writeRaw("lower.txt", doc);
        const QString other = writeRaw("note.Document", doc), misc = writeRaw("misc.doc", doc);
        const QString dotted = writeRaw(".dotted.TXT", doc), readOnly = writeRaw("readonly.TXT", doc);
        QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        const QString hidden = writeRaw("hidden.TXT", doc), hiddenOther = writeRaw("hidden.Document", doc);
        QVERIFY(FileAttributes::add(hidden, FileAttributes::Hidden));
        QVERIFY(FileAttributes::add(hiddenOther, FileAttributes::Hidden));
        // Mode 3 saves, then marks the file read-only and hidden.
        const QString both = folder() + "/both.TXT";
        QVERIFY(Database::SaveDocument(both, blankDocument("b", at(2009, 4, 1, 9), "x"), 3));
        QCOMPARE(FileAttributes::of(both), FileAttributes::ReadOnly | FileAttributes::Hidden);
        QDir().mkpath(folder() + "/folder.TXT"); // folders are never listed

        auto set = [](const QStringList &list) { return QSet<QString>(list.begin(), list.end()); };
        const QList<QSet<QString>> expected{
            {plain, lower, other, misc, dotted, readOnly, hidden, hiddenOther, both},
            {readOnly, hidden, hiddenOther, both},
            {plain, lower, dotted, readOnly, hidden, both},
            {readOnly, hidden, both},
            {other, hiddenOther},
            {hiddenOther},
            {plain, lower, dotted, readOnly, hidden, both}, // 2 wins over 4
        };
        for (int flags = 0; flags < expected.size(); ++flags)
            QVERIFY2(set(Database::ListDocuments(flags)) == expected[flags], qPrintable(QString::number(flags)));
        QCOMPARE(Database::ListDocuments(0).size(), 9);
        // Saved over, a hidden file stays hidden.
        QVERIFY(Database::SaveDocument(hidden, blankDocument("new", at(2009, 4, 2), ""), 2));
        QCOMPARE(FileAttributes::of(hidden), FileAttributes::Hidden);
    }

    void listingKeepsTheFileSystemOrder()
    {
        for (int i = 0; i < 40; ++i)
            writeRaw(QStringLiteral("%1.TXT").arg((i * 7919) % 1000, 14, 10, QChar('0')), "\"\",#2009-04-01#\r\n");
        QStringList expected = QDir(folder()).entryList(QDir::Files, QDir::Unsorted); // as the directory holds them
        for (QString &name : expected)
            name.prepend(folder() + '/');
        QCOMPARE(Database::ListDocuments(2), expected);
    }

    // A save that cannot happen leaves the old file exactly as it was.
    void failedSavesKeepTheOldFile()
    {
        const QString kept = folder() + "/kept.TXT";
        QVERIFY(Database::SaveDocument(kept, blankDocument("kept", at(2009, 4, 1, 9, 30, 15), "old"), 3));
        const QString binary = writeRaw("b.TXT", "\"Binary\",#2009-04-01#\r\nbody\r\n");
        const QList<QPair<QString, int>> refused{{kept, 2}, {binary, 4}, {binary, 5}}; // read-only; binary mode
        for (const auto &[path, mode] : refused) {
            const QByteArray before = fileBytes(path);
            QVERIFY(!Database::SaveDocument(path, blankDocument("new", at(2010, 1, 1, 1, 1, 1), "new"), mode));
            QCOMPARE(fileBytes(path), before);
        }
        QCOMPARE(FileAttributes::of(binary), FileAttributes::Normal);
        verifyBlank(Database::LoadDocument(binary, 4));
        QCOMPARE(Database::LoadDocument(binary, 3).DocumentTitle, QString("Binary"));

        // A folder that cannot be made lists nothing and saves nothing.
        QTemporaryDir scratch;
        const QString blocker = scratch.filePath("file");
        QFile(blocker).open(QIODevice::WriteOnly);
        const QByteArray saved = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", blocker.toLocal8Bit());
        const QStringList listed = Database::ListDocuments(0);
        const QString name = Database::NewFileName(at(2009, 4, 1, 9, 30, 15));
        const bool written = Database::SaveDocument(name, blankDocument("x", at(2009, 4, 1, 9, 30, 15), "x"), 2);
        qputenv("XDG_DATA_HOME", saved);
        QVERIFY(listed.isEmpty());
        QVERIFY(!written);
        QVERIFY(!QFile::exists(name));
    }
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "test_database.moc"
