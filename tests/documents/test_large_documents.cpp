#include "app/Globals.h"
#include "app/SettingsStore.h"
#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/WordProcessor.h"
#include "support/DocumentRecords.h"
#include "support/FileBytes.h"
#include "tools/InfoDlg.h"
#include "workspace/RecentDocuments.h"
#include "workspace/WelcomeBox.h"
#include "workspace/Workspace.h"

#include <QDir>
#include <QFile>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

using namespace Qt::StringLiterals;

// Large documents: up to the size limit one opens at its first page without
// the whole text laid out first; past it, it is refused in plain words and
// its file stays as it was.

namespace {

// A document file of exactly `bytes` bytes: many short paragraphs of rich text.
QString documentOfSize(qint64 bytes)
{
    DocumentRecord record = blankDocument(u"大きい"_s, QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)));
    const QString path = Database::NewFileName(record.Timestamp);
    const QByteArray header = "\"\x91\xe5\x82\xab\x82\xa2\",#2021-03-04 05:06:07#\r\n"; // the title in code page 932
    const QString head = u"{\\rtf1\\ansi "_s;
    const QString paragraph = u"A line of the diary, long enough to wrap.\\par "_s;
    QString body = head;
    const qint64 room = bytes - header.size() - 2 /* CR LF */ - 1 /* } */;
    body.reserve(room + 1);
    while (body.size() + paragraph.size() <= room)
        body += paragraph;
    body += QString(room - body.size(), u'x') + u'}';
    record.page(1).item(1).Text = body;
    Database::SaveDocument(path, record, Database::Sequential);
    return path;
}

} // namespace

class TestLargeDocuments : public QObject
{
    Q_OBJECT

private slots:
    void sizeLimitDecidesWhetherADocumentOpens_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("message");
        QTest::newRow("10 MB exactly") << qint64(10 * 1024 * 1024) << QString();
        QTest::newRow("one byte more") << qint64(10 * 1024 * 1024 + 1)
                                       << u"このドキュメントを開けませんでした。\nファイルが大きすぎます。\nファイルはそのまま残してあります。"_s;
    }

    void sizeLimitDecidesWhetherADocumentOpens()
    {
        QFETCH(qint64, bytes);
        QFETCH(QString, message);
        QDir(SettingsStore::DocumentFolder()).removeRecursively();
        const QString path = documentOfSize(bytes);
        QCOMPARE(QFileInfo(path).size(), bytes);
        const QByteArray before = fileBytes(path);

        // The list reads the head alone, whatever the size.
        const QList<RecentDocuments::Entry> listed = RecentDocuments::list();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.first().title, u"大きい"_s);

        Globals::MusicOn = Globals::GraphicOn = Globals::HowToOn = false;
        Workspace::setCharacterRoutine([](QString &) {});
        Workspace w;
        w.setInfoDlg(new InfoDlg(&w));
        QStringList told;
        w.setMessageRoutine([&told](QWidget *, const QString &text) { told.append(text); });
        w.resize(1366, 768);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.Reload();
        w.ApplySetting();
        w.Start();
        emit w.welcomeBox()->documentChosen(path);

        if (!message.isEmpty()) {
            QCOMPARE(told, QStringList{message});
            QVERIFY(w.welcomeBox()->isVisible());
            QCOMPARE(w.Document(), Workspace::NothingView);
            QVERIFY(fileBytes(path) == before);
            return;
        }
        QVERIFY(told.isEmpty());
        QCOMPARE(w.Document(), Workspace::DocumentView);
        auto *applet = qobject_cast<DatabaseApplet *>(w.activeApplet());
        QVERIFY(applet);
        WordProcessor *box = applet->WordProcessors(1);
        QVERIFY(box && box->isVisible());
        QVERIFY(box->toPlainText().startsWith(u"A line of the diary"_s));
        // The first page shows, the caret at its start, and the end of the
        // text is still to be laid out: opening did not wait for all of it.
        QCOMPARE(box->textCursor().position(), 0);
        QCOMPARE(box->verticalScrollBar()->value(), 0);
        QCOMPARE(box->document()->lastBlock().layout()->lineCount(), 0);
    }
};

QTEST_MAIN(TestLargeDocuments)
#include "test_large_documents.moc"
