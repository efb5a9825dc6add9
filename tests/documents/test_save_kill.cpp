#include "documents/Database.h"

#include <QCoreApplication>
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

// About 4 MB of rich text, so that a save takes long enough to be cut short.
DocumentRecord largeDocument(const QString &title, char filler)
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.DocumentTitle = title;
    record.Timestamp = QDateTime(QDate(2009, 4, 1), QTime(9, 30, 15));
    record.page(1).item(1).Text = "{\\rtf1\\ansi " + QString(4 * 1024 * 1024, QChar::fromLatin1(filler)) + "}";
    return record;
}

QByteArray savedBytes(const QString &path, const DocumentRecord &record)
{
    QFile file(path);
    return Database::SaveDocument(path, record, 2) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSaveKill : public QObject
{
    Q_OBJECT

private slots:
    void killedSaveLeavesOneWholeDocument()
    {
        QTemporaryDir scratch;
        const QString path = scratch.filePath("20090401093015.TXT");
        // The two possible files, as a finished save writes them; the first is on disk.
        const QByteArray second = savedBytes(path, largeDocument("second", 'b'));
        const QByteArray first = savedBytes(path, largeDocument("first", 'a'));
        QVERIFY(first.size() > 4 * 1024 * 1024 && second.size() > 4 * 1024 * 1024);

        int sawFirst = 0, sawSecond = 0;
        for (int round = 0; round < 30; ++round) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(), {SaverArgument, path});
            QVERIFY(saver.waitForStarted());
            QTest::qWait(QRandomGenerator::global()->bounded(20, 300));
            ::kill(saver.processId(), SIGKILL);
            QVERIFY(saver.waitForFinished());
            QCOMPARE(saver.exitStatus(), QProcess::CrashExit);

            QFile file(path);
            const QByteArray found = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            sawFirst += found == first;
            sawSecond += found == second;
            QVERIFY2(found == first || found == second,
                     qPrintable(QStringLiteral("round %1: the file holds %2 bytes of neither document").arg(round).arg(found.size())));
        }
        qInfo("old document %d times, new document %d times", sawFirst, sawSecond);
        // Saves did finish between the kills, or the test proved nothing.
        QVERIFY(sawSecond > 0);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // The child: saves the two documents in turn until it is killed.
    if (argc == 3 && qstrcmp(argv[1], SaverArgument) == 0) {
        const QString path = QString::fromLocal8Bit(argv[2]);
        const DocumentRecord first = largeDocument("first", 'a'), second = largeDocument("second", 'b');
        for (;;) {
            Database::SaveDocument(path, first, 2);
            Database::SaveDocument(path, second, 2);
        }
    }
    TestSaveKill test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_save_kill.moc"
