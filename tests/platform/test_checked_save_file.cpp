// Saving on a disk that fills up part-way: the write fails, and the old file
// must stay exactly as it was. The disk is "full" because the process may
// not write files larger than a limit (see FileSizeLimit), which needs no root.
#include "documents/Database.h"
#include "platform/CheckedSaveFile.h"
#include "platform/IniFile.h"
#include "support/FileBytes.h"
#include "support/FileSizeLimit.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

using Writer = std::function<bool(const QString &path, const QByteArray &content)>;

} // namespace

class TestCheckedSaveFile : public QObject
{
    Q_OBJECT

private slots:
    void oldFileStaysWholeWhenTheDiskFills_data()
    {
        QTest::addColumn<Writer>("writer");
        QTest::addColumn<int>("size");
        const Writer document = [](const QString &path, const QByteArray &content) {
            DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
            record.DocumentTitle = QStringLiteral("満杯");
            record.Timestamp = QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5));
            record.Pages[0].Items[0].Text = QString::fromLatin1(content);
            Database::SaveDocument(path, record, Database::Sequential);
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
};

QTEST_GUILESS_MAIN(TestCheckedSaveFile)
#include "test_checked_save_file.moc"
