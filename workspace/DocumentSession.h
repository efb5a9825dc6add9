#pragma once

#include "documents/DocumentRecord.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

class RecoveryJournal;
class Workspace;

// The open document's life in the workspace: the current record and its file
// (empty until it is first saved), saving it when it is left, opening,
// copying, reverting and deleting it, and the journal that keeps what the
// user writes until it is on the disk.
//
// Nothing the user wrote is dropped: a save that fails keeps the text in the
// journal and the document on the screen, and the user is told.
class DocumentSession : public QObject
{
    Q_OBJECT

public:
    // The yes/no question before revert and delete.
    using QuestionRoutine = std::function<bool(QWidget *parent, const QString &question)>;
    // A plain message the user must see, such as a document that cannot be opened.
    using MessageRoutine = std::function<void(QWidget *parent, const QString &message)>;

    // The session shows its document through the workspace's views.
    explicit DocumentSession(Workspace *workspace);

    DocumentRecord &record() { return m_record; }
    QString path() const { return m_path; }
    RecoveryJournal *journal() const { return m_journal; }

    // QuestionBox::ask and QuestionBox::tell unless replaced.
    void setQuestionRoutine(QuestionRoutine routine) { m_ask = std::move(routine); }
    void setMessageRoutine(MessageRoutine routine) { m_tell = std::move(routine); }

    // The title of text that another run left unsaved, if there is any.
    std::optional<QString> leftBehindTitle() const;

    // Shows the record in the active applet, between the side bars.
    void enter();
    // The document goes off the screen and is saved. A document that could
    // not be saved comes back on the screen as it was, the journal holds it
    // and the user is told: false then.
    bool leave();
    void tellNotSaved();
    // The next document starts without a file of its own.
    void forgetFile();

signals:
    // The document and its side bars are on the screen.
    void documentShown();

public slots:
    // The user wrote something: it goes to the journal once they pause.
    void keepAfterPause();
    void openTemplate(qint16 templateNumber);
    // A file that cannot be read stays closed, and the user hears why.
    void openDocument(const QString &path);
    // Text a run ended without saving opens as the document it was.
    void openLeftBehind();
    void revert();
    void copy();
    void remove();

private:
    bool save();
    void keepInJournal();
    void closeApplet();
    QString shownTitle() const;

    Workspace *m_workspace;
    DocumentRecord m_record;
    QString m_path;
    RecoveryJournal *m_journal;
    QTimer m_journalPause;
    QuestionRoutine m_ask;
    MessageRoutine m_tell;
};
