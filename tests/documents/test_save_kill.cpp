#include "documents/Database.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

// Saving never loses a document: a process killed in the middle of saving
// leaves the old document or the new one, whole. The test starts this same
// program as a child that saves two large documents in turn over one file,
// kills it at random moments, and looks at what is on disk each time.

namespace {

constexpr char SaverArgument[] = "--keep-saving";

DocumentRecord largeDocument(const QString &title, char filler)
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.DocumentTitle = title;
    record.Timestamp = QDateTime(QDate(2009, 4, 1), QTime(9, 30, 15));
    // About 4 MB of rich text, so a save takes long enough to be cut short.
    record.page(1).item(1).Text = "{\\rtf1\\ansi " + QString(4 * 1024 * 1024, QChar::fromLatin1(filler)) + "}";
    return record;
}

// The child: saves the two documents in turn until it is killed.
[[noreturn]] void keepSaving(const QString &path)
{
    const DocumentRecord first = largeDocument("first", 'a');
    const DocumentRecord second = largeDocument("second", 'b');
    for (;;) {
        Database::SaveDocument(path, first, 2);
        Database::SaveDocument(path, second, 2);
    }
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSaveKill : public QObject
{
    Q_OBJECT

private slots:
    void killedSaveLeavesOneWholeDocument()
    {
        QTemporaryDir scratch;
        QVERIFY(scratch.isValid());
        const QString path = scratch.filePath("20090401093015.TXT");

        // The two possible files, as a finished save writes them.
        Database::SaveDocument(scratch.filePath("first"), largeDocument("first", 'a'), 2);
        Database::SaveDocument(scratch.filePath("second"), largeDocument("second", 'b'), 2);
        const QByteArray first = contents(scratch.filePath("first"));
        const QByteArray second = contents(scratch.filePath("second"));
        QVERIFY(first.size() > 4 * 1024 * 1024);
        QFile::copy(scratch.filePath("first"), path);

        int sawFirst = 0;
        int sawSecond = 0;
        for (int round = 0; round < 30; ++round) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(), {SaverArgument, path});
            QVERIFY(saver.waitForStarted());
            QTest::qWait(QRandomGenerator::global()->bounded(20, 300));
            ::kill(saver.processId(), SIGKILL);
            QVERIFY(saver.waitForFinished());
            QCOMPARE(saver.exitStatus(), QProcess::CrashExit);

            const QByteArray found = contents(path);
            if (found == first)
                ++sawFirst;
            else if (found == second)
                ++sawSecond;
            else
                QFAIL(qPrintable(QStringLiteral("round %1: the file holds %2 bytes of neither document")
                                     .arg(round).arg(found.size())));
        }
        qInfo("old document %d times, new document %d times", sawFirst, sawSecond);
        // Saves did finish between the kills, or the test proved nothing.
        QVERIFY(sawSecond > 0);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], SaverArgument) == 0)
        keepSaving(QString::fromLocal8Bit(argv[2]));
    TestSaveKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_save_kill.moc"
