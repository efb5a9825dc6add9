#include "documents/Database.h"
#include "documents/RecoveryJournal.h"
#include "support/DocumentRecords.h"

#include <QDir>
#include <QTest>

// What one run keeps is what the next run finds: the newest text, its title
// and the file it belongs to; nothing once saved; a run never offers its own.
class TestRecoveryJournal : public QObject
{
    Q_OBJECT

    static QString leftBehindTitle()
    {
        const std::optional<RecoveryJournal::Entry> entry = RecoveryJournal().leftBehind();
        return entry ? entry->record.DocumentTitle : QStringLiteral("(nothing)");
    }

private slots:
    void init() { QDir(RecoveryJournal::folder()).removeRecursively(); }

    void theNextRunFindsTheNewestText()
    {
        RecoveryJournal crashed;
        const QString letter = QStringLiteral("/documents/letter.TXT");
        crashed.keep(letter, blankDocument(QStringLiteral("first"), {}, QStringLiteral("a")));
        crashed.keep(letter, blankDocument(QStringLiteral("梅の花"), {}, QStringLiteral("{\\rtf1 梅が咲きました}")));
        crashed.flush();
        QCOMPARE(crashed.leftBehind().has_value(), false);

        const std::optional<RecoveryJournal::Entry> found = RecoveryJournal().leftBehind();
        QVERIFY(found);
        QCOMPARE(found->origin, letter);
        QCOMPARE(found->record.DocumentTitle, QStringLiteral("梅の花"));
        QCOMPARE(found->record.page(1).item(1).Text, QStringLiteral("{\\rtf1 梅が咲きました}"));
    }

    void theNewestRunComesFirst()
    {
        RecoveryJournal older;
        older.keep(QString(), blankDocument(QStringLiteral("older"), {}, QStringLiteral("x")));
        older.flush();
        RecoveryJournal newer;
        newer.keep(QString(), blankDocument(QStringLiteral("newer"), {}, QStringLiteral("y")));
        newer.flush();
        QCOMPARE(leftBehindTitle(), QStringLiteral("newer"));
        QCOMPARE(RecoveryJournal().leftBehind()->origin, QString()); // a new document has no file
    }

    // Opened again, the text belongs to the run that opened it: saved there,
    // it is offered no more; crashed again, it is offered again.
    void adoptedTextFollowsItsNewRun()
    {
        {
            RecoveryJournal crashed;
            crashed.keep(QStringLiteral("/documents/a.TXT"),
                         blankDocument(QStringLiteral("again"), {}, QStringLiteral("x")));
        }
        RecoveryJournal reopening;
        reopening.adopt(reopening.leftBehind()->run);
        QCOMPARE(leftBehindTitle(), QStringLiteral("again"));
        QCOMPARE(RecoveryJournal().leftBehind()->origin, QStringLiteral("/documents/a.TXT"));
        reopening.discard();
        QCOMPARE(leftBehindTitle(), QStringLiteral("(nothing)"));
        QCOMPARE(QDir(RecoveryJournal::folder()).entryList(QDir::Files), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestRecoveryJournal)
#include "test_recovery_journal.moc"
