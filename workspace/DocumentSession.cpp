#include "workspace/DocumentSession.h"

#include "documents/Database.h"
#include "documents/DatabaseApplet.h"
#include "documents/RecoveryJournal.h"
#include "documents/WordProcessor.h"
#include "platform/ErrorTrap.h"
#include "platform/RuntimeLog.h"
#include "platform/touch/TouchEdit.h"
#include "tools/QuestionBox.h"
#include "workspace/FormatActions.h"
#include "workspace/SideMenuBar.h"
#include "workspace/Workspace.h"

#include <QFile>

namespace {

// How long typing pauses before the text goes to the journal: with the
// write itself, well within two seconds of the last key.
constexpr int JournalPauseMilliseconds = 1200;

// Now, to the second: the precision of a document's save time.
QDateTime currentSecond()
{
    const QDateTime now = QDateTime::currentDateTime();
    return QDateTime(now.date(), QTime(now.time().hour(), now.time().minute(), now.time().second()));
}

} // namespace

DocumentSession::DocumentSession(Workspace *workspace)
    : QObject(workspace)
    , m_workspace(workspace)
    , m_journal(new RecoveryJournal(this))
    , m_ask(&QuestionBox::ask)
    , m_tell(&QuestionBox::tell)
{
    // What the user writes reaches the disk a moment after they pause, so
    // that a crash loses none of it.
    m_journalPause.setSingleShot(true);
    m_journalPause.setInterval(JournalPauseMilliseconds);
    connect(&m_journalPause, &QTimer::timeout, this, &DocumentSession::keepInJournal);
}

std::optional<QString> DocumentSession::leftBehindTitle() const
{
    const std::optional<RecoveryJournal::Entry> leftBehind = m_journal->leftBehind();
    return leftBehind ? std::optional<QString>(leftBehind->record.DocumentTitle) : std::nullopt;
}

QString DocumentSession::shownTitle() const
{
    return m_workspace->SideMenuBars(SideMenuBar::DocumentBar)->titleField()->text();
}

void DocumentSession::keepAfterPause()
{
    m_journalPause.start();
}

void DocumentSession::forgetFile()
{
    m_path.clear();
}

// The shown page closes; its record stays as the applet last wrote it.
void DocumentSession::closeApplet()
{
    if (Applet *applet = m_workspace->activeApplet()) {
        applet->hide();
        ErrorTrap::run("Workspace::Document: applet", [applet] { applet->setDocument(0); });
    }
}

void DocumentSession::enter()
{
    SideMenuBar *documentBar = m_workspace->SideMenuBars(SideMenuBar::DocumentBar);
    SideMenuBar *formatBar = m_workspace->SideMenuBars(SideMenuBar::FormatBar);
    documentBar->show();
    formatBar->show();
    documentBar->titleField()->setText(m_record.DocumentTitle);
    if (Applet *applet = m_workspace->activeApplet()) {
        applet->setDocument(Workspace::DocumentView);
        applet->show();
        applet->raise();
        // The first box takes the caret, so the format buttons act at once.
        if (auto *document = qobject_cast<DatabaseApplet *>(applet)) {
            if (WordProcessor *box = document->WordProcessors(1))
                box->setFocus();
        }
        // The format bar shows the paragraph at the caret from the start.
        FormatActions::showProperties(applet, formatBar);
    }
    // Putting the document on the screen changed its boxes, not its text.
    m_journalPause.stop();
    emit documentShown();
}

bool DocumentSession::leave()
{
    closeApplet();
    bool saved = false;
    ErrorTrap::run("Workspace::Document: save", [&] { saved = save(); });
    m_workspace->SideMenuBars(SideMenuBar::DocumentBar)->hide();
    m_workspace->SideMenuBars(SideMenuBar::FormatBar)->hide();
    m_workspace->update();
    if (!saved) {
        enter();
        tellNotSaved();
    }
    return saved;
}

void DocumentSession::tellNotSaved()
{
    m_tell(m_workspace, QStringLiteral("このドキュメントを保存できませんでした。\n"
                                       "書いた文章は画面に残してあります。\n"
                                       "ディスクの空きを確かめてから、\n"
                                       "もう一度 [保存して閉じる] をクリックしてください。"));
}

bool DocumentSession::save()
{
    if (Applet *applet = m_workspace->activeApplet())
        applet->syncRecord();
    m_record.DocumentTitle = shownTitle();
    // A document saved for the first time takes a name no other file has.
    const bool firstSave = m_path.isEmpty();
    m_record.Timestamp = firstSave ? Database::FreeSaveTime(QDateTime::currentDateTime()) : currentSecond();
    if (firstSave)
        m_path = Database::NewFileName(m_record.Timestamp);
    m_journalPause.stop();
    if (Database::SaveDocument(m_path, m_record, Database::Sequential)) {
        m_journal->discard();
        return true;
    }
    // Not on the disk: the next try picks a free name again, and meanwhile
    // the journal holds the text.
    if (firstSave)
        m_path.clear();
    m_journal->keep(m_path, m_record);
    return false;
}

void DocumentSession::keepInJournal()
{
    if (m_workspace->Document() != Workspace::DocumentView)
        return;
    if (Applet *applet = m_workspace->activeApplet())
        applet->syncRecord();
    DocumentRecord record = m_record;
    record.DocumentTitle = shownTitle();
    m_journal->keep(m_path, record);
}

void DocumentSession::openLeftBehind()
{
    const std::optional<RecoveryJournal::Entry> entry = m_journal->leftBehind();
    if (!entry)
        return;
    m_journal->adopt(entry->run);
    m_path = entry->origin;
    m_record = entry->record;
    m_workspace->setDocument(Workspace::DocumentView);
}

void DocumentSession::openTemplate(qint16 templateNumber)
{
    m_path.clear();
    m_record = Database::NewDocument(templateNumber);
    m_workspace->setDocument(Workspace::DocumentView);
}

void DocumentSession::openDocument(const QString &path)
{
    Database::LoadOutcome outcome = Database::LoadOutcome::Unreadable;
    DocumentRecord record = Database::LoadDocument(path, Database::Sequential, &outcome);
    if (outcome != Database::LoadOutcome::Read) {
        // Opened blank, it would be saved blank over the file.
        m_tell(m_workspace, outcome == Database::LoadOutcome::TooLarge ? QStringLiteral("このドキュメントを開けませんでした。\n"
                                                                                        "ファイルが大きすぎます。\n"
                                                                                        "ファイルはそのまま残してあります。")
                                                                       : QStringLiteral("このドキュメントを開けませんでした。\n"
                                                                                        "ファイルが読み取れません。\n"
                                                                                        "ファイルはそのまま残してあります。"));
        return;
    }
    m_path = path;
    m_record = record;
    m_workspace->setDocument(Workspace::DocumentView);
}

void DocumentSession::revert()
{
    if (!m_ask(m_workspace, QStringLiteral("このドキュメントの今までの作業をすべてキャンセルして、保存された状態に戻しますか?")))
        return;
    DocumentRecord stored = m_path.isEmpty() ? Database::NewDocument(Database::BlankTemplate) : Database::LoadDocument(m_path, Database::Sequential);
    // The edits on screen are dropped, not saved: the shown page closes
    // before the stored record takes its place.
    closeApplet();
    m_record = stored;
    m_journalPause.stop();
    m_journal->discard();
    m_workspace->setDocument(Workspace::DocumentView);
}

void DocumentSession::copy()
{
    m_workspace->setDocument(Workspace::NothingView);
    if (m_workspace->Document() == Workspace::DocumentView)
        return; // the original could not be saved: no copy of it yet
    m_record.DocumentTitle = QStringLiteral("(コピー)");
    m_workspace->setDocument(Workspace::DocumentView);
    // The copy is a file of its own, never the original's, with its own
    // save time in its header.
    m_record.Timestamp = Database::FreeSaveTime(QDateTime::currentDateTime());
    m_path = Database::NewFileName(m_record.Timestamp);
    if (!Database::SaveDocument(m_path, m_record, Database::Sequential)) {
        m_path.clear();
        tellNotSaved();
    }
}

void DocumentSession::remove()
{
    if (!m_ask(m_workspace, QStringLiteral("このドキュメントを削除しますか?")))
        return;
    m_workspace->setDocument(Workspace::NothingView);
    if (m_workspace->Document() == Workspace::DocumentView)
        return;
    if (!QFile::remove(m_path))
        RuntimeLog::note("Workspace: delete", QStringLiteral("could not delete %1").arg(m_path));
    m_workspace->setDocument(Workspace::WelcomeView);
}
