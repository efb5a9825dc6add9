#pragma once

#include "app/DatabaseSettings.h"
#include "documents/DocumentRecord.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

// The document store. Every document is one text file in the document folder,
// in code page 932 without a byte-order mark:
//
//     "title",#yyyy-mm-dd hh:mm:ss#      (CR LF; "#yyyy-mm-dd#" at midnight)
//     the first box's rich text          (CR LF, never wrapped)
//
// Only the title, the save time and the text of box 1 on page 1 are kept; the
// rest of a loaded record takes the blank document's values. No operation
// raises an error: a failing step is noted in the runtime log and skipped;
// only a load says, when asked, whether its file could be read.
class Database
{
public:
    // Open modes.
    static constexpr qint16 Sequential = 2;
    // Binary with the whole file locked. No document flow uses it and its
    // byte layout is not fixed, so it is refused: saving writes nothing and
    // loading gives the blank document.
    static constexpr qint16 Binary = 4;
    // Added to a mode: after saving, the file is made read-only and hidden.
    static constexpr qint16 ReadOnlyHidden = 1;

    // ListDocuments flags.
    static constexpr qint32 OnlyReadOnlyOrHidden = 1;
    static constexpr qint32 OnlyText = 2;     // *.TXT; wins over OnlyDocument
    static constexpr qint32 OnlyDocument = 4; // *.Document

    // The template number of the blank document, the only one the store knows.
    static constexpr qint16 BlankTemplate = 1000;

    // The blank printer set-up, page and box.
    static DocumentRecord NewDocument(qint16 templateNumber);

    // The largest document file that is opened. A larger one would hold the
    // window still for seconds while its text is read and laid out; it is
    // refused instead, its file left as it is.
    static constexpr qint64 LargestDocumentBytes = 10 * 1024 * 1024;

    // How a load went: only a document that was read whole may ever be saved
    // over its file.
    enum class LoadOutcome { Read,
                             Unreadable,
                             TooLarge };

    // The document in a file; the blank document when the file cannot be read
    // or is larger than LargestDocumentBytes. A header that does not parse
    // keeps the blank values of the fields that failed, and the lines after
    // it still become the text. `readable`, when given, tells whether the
    // whole file could be read.
    static DocumentRecord LoadDocument(const QString &path, qint16 mode, bool *readable = nullptr);
    static DocumentRecord LoadDocument(const QString &path, qint16 mode, LoadOutcome *outcome);

    // Writes the document beside the old file and moves it over the old one
    // only once it is complete on disk, so that a crash, a full disk or a
    // killed process leaves either the old or the new document whole. A file
    // that is read-only is left as it is, as the system refuses to replace it.
    // True when the document is on the disk.
    static bool SaveDocument(const QString &path, const DocumentRecord &record, qint16 mode);

    // Full paths of the files in the document folder, in the order the file
    // system gives them, read-only and hidden files included; the unfinished
    // file of a save that was cut short is no document and is left out.
    static QStringList ListDocuments(qint32 flags);

    // What the recent-documents list shows of a document, read from the head of
    // the file alone: the same title and time LoadDocument gives.
    struct Header
    {
        QString DocumentTitle;
        QDateTime Timestamp;
    };
    static Header ReadHeader(const QString &path);

    // The file of a new document saved at the given time: the document folder,
    // "/", the time as "yyyymmddhhnnss" and ".TXT".
    static QString NewFileName(const QDateTime &saveTime);
    // The save time for a new document: the given time to the second, or the
    // next second whose file name is free, so that no document is ever
    // written over by another.
    static QDateTime FreeSaveTime(const QDateTime &wanted);

    static DatabaseSettings LoadDatabaseSettings();
    static void SaveDatabaseSettings(const DatabaseSettings &settings);
};
