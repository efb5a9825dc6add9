#include "documents/Database.h"
#include "platform/FileAttributes.h"
#include "platform/vb/VbError.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

// The document store against files in the test's own document folder.
class TestDatabase : public QObject
{
    Q_OBJECT

private:
    QString folder() const { return QDir::cleanPath(qEnvironmentVariable("XDG_DATA_HOME") + "/Fernwick/Nib"); }

    QString writeRaw(const QString &name, const QByteArray &bytes)
    {
        QDir().mkpath(folder());
        const QString path = folder() + '/' + name;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static QByteArray readRaw(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
    }

    static DocumentRecord document(const QString &title, const QDateTime &time, const QString &text)
    {
        DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
        record.DocumentTitle = title;
        record.Timestamp = time;
        record.page(1).item(1).Text = text;
        return record;
    }

    static QDateTime at(int y, int mo, int d, int h, int mi, int s)
    {
        return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::LocalTime);
    }

    static void verifyBlank(const DocumentRecord &record)
    {
        QCOMPARE(record.DocumentTitle, QString());
        QVERIFY(!record.Timestamp.isValid());
        QCOMPARE(record.PageCount, 1);
        QCOMPARE(record.Pages.size(), 1);
        QCOMPARE(record.page(1).ItemCount, 1);
        QCOMPARE(record.page(1).item(1).Text, QString());
        QCOMPARE(record.Zoom, 100);
    }

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

    void blankDocumentHasTheA4WritingArea()
    {
        const DocumentRecord record = Database::NewDocument(1000);
        QCOMPARE(record.DocumentTitle, QString());
        QVERIFY(!record.Timestamp.isValid());
        QCOMPARE(record.PaperSetting1, 10);
        QCOMPARE(record.PaperSetting2, 7);
        QCOMPARE(record.PaperSetting3, 1);
        QCOMPARE(record.PaperSetting4, 1);
        QCOMPARE(record.PaperSetting5, -3);
        QCOMPARE(record.Copies, 1);
        QCOMPARE(record.Zoom, 100);
        QCOMPARE(record.PageCount, 1);
        QCOMPARE(record.Pages.size(), 1);
        QCOMPARE(record.page(1).ItemCount, 1);
        QCOMPARE(record.page(1).Items.size(), 1);

        const DocumentItem &box = record.page(1).item(1);
        QCOMPARE(box.Unit, 0);
        QCOMPARE(box.Left, 1.5f);
        QCOMPARE(box.Top, 2.0f);
        QCOMPARE(box.Width, 18.0f);
        QCOMPARE(box.Height, 25.7f);
        QCOMPARE(box.Reserved1, 0);
        QCOMPARE(box.Flags1, 0);
        QCOMPARE(box.Flags2, 0);
        QCOMPARE(box.Kind, 5);
        QCOMPARE(box.Text, QString());
    }

    void otherTemplatesHaveAPageWithoutBoxes()
    {
        const DocumentRecord record = Database::NewDocument(7);
        QCOMPARE(record.PageCount, 1);
        QCOMPARE(record.Pages.size(), 1);
        QCOMPARE(record.page(1).ItemCount, 0);
        QVERIFY(record.page(1).Items.isEmpty());
        QCOMPARE(record.Zoom, 100);
        QCOMPARE(record.PaperSetting5, -3);
        try {
            record.page(1).item(1);
            QFAIL("box 1 of a page without boxes");
        } catch (const VbError &error) {
            QCOMPARE(error.number(), 9);
        }
        QVERIFY_THROWS_EXCEPTION(VbError, record.page(2));
        QVERIFY_THROWS_EXCEPTION(VbError, record.page(0));

        // Saved, it has a header and no body line.
        DocumentRecord titled = record;
        titled.DocumentTitle = "t";
        titled.Timestamp = at(2009, 4, 1, 9, 30, 15);
        const QString path = folder() + "/empty.TXT";
        Database::SaveDocument(path, titled, 2);
        QCOMPARE(readRaw(path), QByteArray("\"t\",#2009-04-01 09:30:15#\r\n"));
    }

    void savedFileHasTheHeaderAndOneBodyLine()
    {
        const QString path = folder() + "/a.TXT";
        Database::SaveDocument(path, document("Trip plan", at(2009, 4, 1, 9, 30, 15), "{\\rtf1 hello}"), 2);
        QCOMPARE(readRaw(path), QByteArray("\"Trip plan\",#2009-04-01 09:30:15#\r\n{\\rtf1 hello}\r\n"));

        // Japanese in code page 932, no byte-order mark.
        Database::SaveDocument(path, document("あ", at(2009, 4, 1, 9, 30, 15), "い"), 2);
        QCOMPARE(readRaw(path), QByteArray("\"\x82\xa0\",#2009-04-01 09:30:15#\r\n\x82\xa2\r\n"));

        // A save at midnight writes the date alone; it reads back as midnight.
        Database::SaveDocument(path, document("x", at(2009, 4, 1, 0, 0, 0), ""), 2);
        QCOMPARE(readRaw(path), QByteArray("\"x\",#2009-04-01#\r\n\r\n"));
        QCOMPARE(Database::LoadDocument(path, 2).Timestamp, at(2009, 4, 1, 0, 0, 0));

        // A long body is one line: nothing wraps it.
        const QString longText = "{\\rtf1 " + QString(5000, 'x') + "}";
        Database::SaveDocument(path, document("x", at(2009, 4, 1, 9, 0, 0), longText), 2);
        QCOMPARE(readRaw(path).count("\r\n"), 2);
    }

    void roundTripKeepsTitleTimeAndFirstBoxOnly()
    {
        const QString text = "{\\rtf1\\ansi\\ansicpg932{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}\\f0 \\'82\\'a0 旅行\\par}";
        DocumentRecord record = document("旅行の計画", at(2009, 4, 1, 9, 30, 15), text);
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
        Database::SaveDocument(path, record, 2);
        const DocumentRecord loaded = Database::LoadDocument(path, 2);

        QCOMPARE(loaded.DocumentTitle, QString("旅行の計画"));
        QCOMPARE(loaded.Timestamp, at(2009, 4, 1, 9, 30, 15));
        QCOMPARE(loaded.page(1).item(1).Text, text);
        // Everything else comes back blank.
        QCOMPARE(loaded.Zoom, 100);
        QCOMPARE(loaded.Copies, 1);
        QCOMPARE(loaded.PaperSetting1, 10);
        QCOMPARE(loaded.PageCount, 1);
        QCOMPARE(loaded.Pages.size(), 1);
        QCOMPARE(loaded.page(1).ItemCount, 1);
        QCOMPARE(loaded.page(1).item(1).Left, 1.5f);
    }

    void titlesThroughTheQuotedField_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        QTest::newRow("comma") << "Tokyo, Osaka" << "Tokyo, Osaka";
        QTest::newRow("empty") << "" << "";
        QTest::newRow("leading blanks") << "  spaced  " << "  spaced  ";
        QTest::newRow("hash") << "#1 plan" << "#1 plan";
        // The quote ends the field; the rest up to the comma is passed over.
        QTest::newRow("double quote") << "He said \"hi\" there" << "He said ";
        QTest::newRow("leading double quote") << "\"quoted\"" << "";
        // Characters code page 932 cannot hold come back whole.
        QTest::newRow("emoji and rare kanji") << "😀 𠮷野家" << "😀 𠮷野家";
        QTest::newRow("look-alike") << "¢ and ‖" << "¢ and ‖";
        QTest::newRow("a reference typed by hand") << "&#65; &#12354;" << "&#65; &#12354;";
        QTest::newRow("line break") << "two\r\nlines" << "two\r\nlines";
    }

    void titlesThroughTheQuotedField()
    {
        QFETCH(QString, title);
        QFETCH(QString, expected);
        const QString path = folder() + "/t.TXT";
        Database::SaveDocument(path, document(title, at(2021, 12, 31, 23, 59, 59), "{\\rtf1 body}"), 2);
        const DocumentRecord loaded = Database::LoadDocument(path, 2);
        QCOMPARE(loaded.DocumentTitle, expected);
        QCOMPARE(loaded.Timestamp, at(2021, 12, 31, 23, 59, 59));
        QCOMPARE(loaded.page(1).item(1).Text, QString("{\\rtf1 body}"));

        const Database::Header header = Database::ReadHeader(path);
        QCOMPARE(header.DocumentTitle, expected);
        QCOMPARE(header.Timestamp, loaded.Timestamp);
    }

    void titleOutsideTheCodePageIsWrittenAsReferences()
    {
        const QString path = folder() + "/t.TXT";
        Database::SaveDocument(path, document("a😀", at(2009, 4, 1, 9, 30, 15), ""), 2);
        QVERIFY(readRaw(path).startsWith("\"a&#128512;\",#2009-04-01 09:30:15#\r\n"));
    }

    void richTextOutsideTheCodePageIsEscaped()
    {
        const QString path = folder() + "/t.TXT";
        Database::SaveDocument(path, document("t", at(2009, 4, 1, 9, 30, 15), "{\\rtf1 a😀b}"), 2);
        QCOMPARE(Database::LoadDocument(path, 2).page(1).item(1).Text, QString("{\\rtf1 a{\\uc1\\u-10179?\\u-8704?}b}"));
    }

    // A line end between the lines stays: in rich text it ends the control
    // word before it ("\\par", then "second") and is no text otherwise.
    void bodyLinesAreJoinedWithALineEnd()
    {
        const QString path = writeRaw("m.TXT", "\"Lines\",#2009-04-01 09:30:15#\r\n{\\rtf1\r\nfirst\\par\r\n\r\nsecond}\r\n");
        const DocumentRecord loaded = Database::LoadDocument(path, 2);
        QCOMPARE(loaded.page(1).item(1).Text, QString("{\\rtf1\r\nfirst\\par\r\n\r\nsecond}"));

        // Saved again, the file is as it was.
        Database::SaveDocument(path, loaded, 2);
        QCOMPARE(readRaw(path), QByteArray("\"Lines\",#2009-04-01 09:30:15#\r\n{\\rtf1\r\nfirst\\par\r\n\r\nsecond}\r\n"));

        // A lone CR ends a line; a lone LF is part of it.
        writeRaw("m.TXT", "\"x\",#2009-04-01#\r\na\rb\nc\r\n");
        QCOMPARE(Database::LoadDocument(path, 2).page(1).item(1).Text, QString("a\r\nb\nc"));
    }

    void damagedHeadersKeepWhatParsed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QDateTime>("timestamp");
        QTest::addColumn<QString>("text");

        const QDateTime unset;
        QTest::newRow("not a date") << QByteArray("\"Title\",#not a date#\r\nbody\r\n") << "Title" << unset << "body";
        QTest::newRow("impossible date") << QByteArray("\"T\",#2009-13-45 25:00:00#\r\nline1\r\nline2")
                                         << "T" << unset << "line1\r\nline2";
        QTest::newRow("no date") << QByteArray("\"Only a title\"\r\n") << "Only a title" << unset << "";
        // Input # goes on to the next line for the date.
        QTest::newRow("date on the next line") << QByteArray("\"T\"\r\n#2009-04-01#\r\nbody")
                                               << "T" << at(2009, 4, 1, 0, 0, 0) << "body";
        QTest::newRow("unquoted title") << QByteArray("plain title , #2009-04-01 09:30:15#\r\nbody")
                                        << "plain title" << at(2009, 4, 1, 9, 30, 15) << "body";
        QTest::newRow("extra field") << QByteArray("\"T\",#2009-04-01 09:30:15#,\"extra\"\r\nbody")
                                     << "T" << at(2009, 4, 1, 9, 30, 15) << "\"extra\"\r\nbody";
        QTest::newRow("unclosed quote") << QByteArray("\"Unclosed title\r\nbody\r\n") << "" << unset << "";
        QTest::newRow("empty file") << QByteArray() << "" << unset << "";
        QTest::newRow("only line ends") << QByteArray("\r\n\r\n") << "" << unset << "";
        QTest::newRow("time only") << QByteArray("\"T\",#09:30:15#\r\n")
                                   << "T" << QDateTime(QDate(1899, 12, 30), QTime(9, 30, 15)) << "";
        QTest::newRow("zero date") << QByteArray("\"T\",#1899-12-30#\r\nx") << "T" << unset << "x";
        QTest::newRow("text after the quote") << QByteArray("\"a\"b\"\",#2009-04-01#\r\nx")
                                              << "a" << at(2009, 4, 1, 0, 0, 0) << "x";
        QTest::newRow("binary garbage") << QByteArray("\x00\x01\x02,\xff\xfe\r\n\x00z", 10) << QString::fromLatin1("\x00\x01\x02", 3)
                                        << unset << QString::fromLatin1("\x00z", 2);
    }

    void damagedHeadersKeepWhatParsed()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, title);
        QFETCH(QDateTime, timestamp);
        QFETCH(QString, text);

        const QString path = writeRaw("d.TXT", bytes);
        const DocumentRecord loaded = Database::LoadDocument(path, 2);
        QCOMPARE(loaded.DocumentTitle, title);
        QCOMPARE(loaded.Timestamp, timestamp);
        QCOMPARE(loaded.page(1).item(1).Text, text);
        QCOMPARE(loaded.Zoom, 100);

        const Database::Header header = Database::ReadHeader(path);
        QCOMPARE(header.DocumentTitle, title);
        QCOMPARE(header.Timestamp, timestamp);
    }

    void invalidShiftJisNeverStopsTheLoad()
    {
        // Lead bytes without trail bytes, bytes no table maps, a lead byte
        // right before the closing quote and before the line end.
        const QByteArray bytes("\"\x82\xa0\x81\",#2009-04-01#\r\n\x80\x81\r\n\xff\xfc\xfc\x82\r\n\x82");
        const QString path = writeRaw("s.TXT", bytes);
        const DocumentRecord loaded = Database::LoadDocument(path, 2);
        QVERIFY(loaded.DocumentTitle.startsWith(QString("あ")));
        QCOMPARE(loaded.Timestamp, at(2009, 4, 1, 0, 0, 0));
        QVERIFY(!loaded.page(1).item(1).Text.isEmpty());
        QCOMPARE(Database::ReadHeader(path).DocumentTitle, loaded.DocumentTitle);
    }

    void longTitleIsReadWholeByTheHeaderReader()
    {
        const QString title = QString(3000, QChar(u'字'));   // 6000 bytes in the code page
        const QString path = folder() + "/long.TXT";
        Database::SaveDocument(path, document(title, at(2009, 4, 1, 9, 30, 15), QString(100000, 'x')), 2);
        const Database::Header header = Database::ReadHeader(path);
        QCOMPARE(header.DocumentTitle, title);
        QCOMPARE(header.Timestamp, at(2009, 4, 1, 9, 30, 15));
    }

    void unreadableFilesLoadAsTheBlankDocument()
    {
        verifyBlank(Database::LoadDocument(folder() + "/missing.TXT", 2));
        QDir().mkpath(folder() + "/folder.TXT");
        verifyBlank(Database::LoadDocument(folder() + "/folder.TXT", 2));
        QCOMPARE(Database::ReadHeader(folder() + "/missing.TXT").DocumentTitle, QString());

        if (::geteuid() != 0) {
            const QString path = writeRaw("locked.TXT", "\"Secret\",#2009-04-01#\r\nx\r\n");
            QFile::setPermissions(path, {});
            verifyBlank(Database::LoadDocument(path, 2));
        }
    }

    void newFileNameIsTheSaveSecond()
    {
        const QDateTime first(QDate(2009, 4, 1), QTime(9, 30, 15, 10));
        const QDateTime second(QDate(2009, 4, 1), QTime(9, 30, 15, 990));
        QCOMPARE(Database::NewFileName(first), folder() + "/20090401093015.TXT");
        QCOMPARE(Database::NewFileName(second), Database::NewFileName(first));
        QCOMPARE(Database::NewFileName(QDateTime(QDate(2026, 12, 31), QTime(23, 5, 9))), folder() + "/20261231230509.TXT");

        // The second save of that second replaces the first.
        Database::SaveDocument(Database::NewFileName(first), document("first", first, "1"), 2);
        Database::SaveDocument(Database::NewFileName(second), document("second", second, "2"), 2);
        const QStringList listed = Database::ListDocuments(0);
        QCOMPARE(listed, QStringList{folder() + "/20090401093015.TXT"});
        QCOMPARE(Database::LoadDocument(listed.first(), 2).DocumentTitle, QString("second"));
    }

    void listingFlagsPickNamesAndAttributes()
    {
        const QByteArray doc("\"x\",#2009-04-01#\r\n\r\n");
        const QString plain = writeRaw("plain.TXT", doc);
        const QString lower = writeRaw("lower.txt", doc);
        const QString other = writeRaw("note.Document", doc);
        const QString misc = writeRaw("misc.doc", doc);
        const QString dotted = writeRaw(".dotted.TXT", doc);
        const QString readOnly = writeRaw("readonly.TXT", doc);
        QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        const QString hidden = writeRaw("hidden.TXT", doc);
        QVERIFY(FileAttributes::add(hidden, FileAttributes::Hidden));
        const QString hiddenOther = writeRaw("hidden.Document", doc);
        QVERIFY(FileAttributes::add(hiddenOther, FileAttributes::Hidden));
        const QString both = folder() + "/both.TXT";
        Database::SaveDocument(both, document("b", at(2009, 4, 1, 9, 0, 0), "x"), 3);
        QDir().mkpath(folder() + "/folder.TXT");   // folders are never listed

        QCOMPARE(FileAttributes::of(plain), FileAttributes::Normal);
        QCOMPARE(FileAttributes::of(readOnly), FileAttributes::ReadOnly);
        QCOMPARE(FileAttributes::of(hidden), FileAttributes::Hidden);
        QCOMPARE(FileAttributes::of(both), FileAttributes::ReadOnly | FileAttributes::Hidden);

        auto set = [](const QStringList &list) { return QSet<QString>(list.begin(), list.end()); };
        QCOMPARE(set(Database::ListDocuments(0)),
                 (QSet<QString>{plain, lower, other, misc, dotted, readOnly, hidden, hiddenOther, both}));
        QCOMPARE(set(Database::ListDocuments(1)), (QSet<QString>{readOnly, hidden, hiddenOther, both}));
        QCOMPARE(set(Database::ListDocuments(2)), (QSet<QString>{plain, lower, dotted, readOnly, hidden, both}));
        QCOMPARE(set(Database::ListDocuments(3)), (QSet<QString>{readOnly, hidden, both}));
        QCOMPARE(set(Database::ListDocuments(4)), (QSet<QString>{other, hiddenOther}));
        QCOMPARE(set(Database::ListDocuments(5)), (QSet<QString>{hiddenOther}));
        QCOMPARE(set(Database::ListDocuments(6)), set(Database::ListDocuments(2)));
        QCOMPARE(Database::ListDocuments(0).size(), 9);
    }

    void listingKeepsTheFileSystemOrder()
    {
        for (int i = 0; i < 40; ++i)
            writeRaw(QStringLiteral("%1.TXT").arg((i * 7919) % 1000, 14, 10, QChar('0')), "\"\",#2009-04-01#\r\n");

        QStringList expected;
        DIR *dir = ::opendir(QFile::encodeName(folder()).constData());
        QVERIFY(dir);
        while (const dirent *entry = ::readdir(dir)) {
            const QString name = QFile::decodeName(entry->d_name);
            if (name != "." && name != "..")
                expected << folder() + '/' + name;
        }
        ::closedir(dir);
        QCOMPARE(Database::ListDocuments(2), expected);
    }

    void readOnlyHiddenSaveProtectsTheFile()
    {
        const QString path = folder() + "/kept.TXT";
        Database::SaveDocument(path, document("kept", at(2009, 4, 1, 9, 30, 15), "old"), 3);
        QFileInfo info(path);
        QCOMPARE(info.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther), QFile::Permissions());
        QVERIFY(*FileAttributes::of(path) & FileAttributes::Hidden);
        const QByteArray before = readRaw(path);

        // As on Windows, a read-only file is not replaced.
        Database::SaveDocument(path, document("new", at(2010, 1, 1, 1, 1, 1), "new"), 2);
        QCOMPARE(readRaw(path), before);
        QCOMPARE(Database::LoadDocument(path, 3).DocumentTitle, QString("kept"));
    }

    void savingOverAHiddenFileKeepsItHidden()
    {
        const QString path = writeRaw("h.TXT", "\"old\",#2009-04-01#\r\n\r\n");
        FileAttributes::add(path, FileAttributes::Hidden);
        Database::SaveDocument(path, document("new", at(2009, 4, 2, 0, 0, 0), ""), 2);
        QCOMPARE(Database::LoadDocument(path, 2).DocumentTitle, QString("new"));
        QCOMPARE(FileAttributes::of(path), FileAttributes::Hidden);
    }

    void binaryModeIsRefused()
    {
        const QString path = writeRaw("b.TXT", "\"Binary\",#2009-04-01#\r\nbody\r\n");
        Database::SaveDocument(path, document("changed", at(2010, 1, 1, 0, 0, 0), "x"), 4);
        Database::SaveDocument(path, document("changed", at(2010, 1, 1, 0, 0, 0), "x"), 5);
        QCOMPARE(readRaw(path), QByteArray("\"Binary\",#2009-04-01#\r\nbody\r\n"));
        QCOMPARE(FileAttributes::of(path), FileAttributes::Normal);
        verifyBlank(Database::LoadDocument(path, 4));
        QCOMPARE(Database::LoadDocument(path, 3).DocumentTitle, QString("Binary"));
    }

    void missingFolderListsNothingAndSavesNothing()
    {
        QTemporaryDir scratch;
        const QString blocker = scratch.filePath("file");
        QFile(blocker).open(QIODevice::WriteOnly);
        const QByteArray saved = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", blocker.toLocal8Bit());   // the folder cannot be made below a file
        const QStringList listed = Database::ListDocuments(0);
        const QString name = Database::NewFileName(at(2009, 4, 1, 9, 30, 15));
        Database::SaveDocument(name, document("x", at(2009, 4, 1, 9, 30, 15), "x"), 2);
        qputenv("XDG_DATA_HOME", saved);
        QVERIFY(listed.isEmpty());
        QVERIFY(!QFile::exists(name));
    }
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "test_database.moc"
