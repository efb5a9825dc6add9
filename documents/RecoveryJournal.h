#pragma once

#include "documents/DocumentRecord.h"

#include <QMutex>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <optional>

// What the user wrote since the open document was last saved, kept on the
// disk so that a crash, a killed program or a power cut loses none of it.
//
// Each run keeps its text in one file of its own in the journal folder,
// "<run>.journal": the file the document belongs to (empty for a document
// never saved), its title and its first box's rich text, in UTF-8, written
// whole before it replaces the last one. Writing happens on a thread of its
// own, the newest text replacing any still waiting, so typing never waits for
// the disk. A save throws the text away; what a crashed run left behind is
// offered back at the next start.
class RecoveryJournal : public QObject
{
    Q_OBJECT

public:
    // Text a run left behind.
    struct Entry
    {
        QString run;    // the name its files share
        QString origin; // the document's file; empty for a new document
        DocumentRecord record;
    };

    explicit RecoveryJournal(QObject *parent = nullptr);
    ~RecoveryJournal() override;

    // The folder the journal keeps its files in.
    static QString folder();

    // Keeps the document as it stands, as the text of the file at origin
    // (empty: a document not saved yet). Returns at once.
    void keep(const QString &origin, const DocumentRecord &record);
    // The document is on the disk: what this run kept goes.
    void discard();
    // Waits until all that was handed to keep is on the disk.
    void flush();

    // The newest text that another run left behind, if any.
    std::optional<Entry> leftBehind() const;
    // Makes text left behind this run's own: it is being worked on again.
    void adopt(const QString &run);

signals:
    // A text handed to keep reached the disk. From the writing thread.
    void kept();

private:
    struct Pending
    {
        QString origin;
        DocumentRecord record;
    };

    static QString pathOf(const QString &run);
    void writeWaiting(); // on the writing thread

    const QString m_run;
    QThreadPool m_writer;
    QMutex m_lock; // guards the two below
    std::optional<Pending> m_waiting;
    quint64 m_handedIn = 0; // texts handed to keep so far
};
