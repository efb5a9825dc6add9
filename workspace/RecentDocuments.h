#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

// The documents of the document folder as the recent-documents list shows
// them: title and save time read from each file's head only, newest first.
class RecentDocuments
{
public:
    struct Entry
    {
        QString path;
        QString title;
        QDateTime timestamp;
    };

    // Every "*.TXT" document of the folder, newest first.
    static QList<Entry> list();

    // The entries whose title or text holds the keyword (case ignored); all of
    // them for an empty keyword. The text is read only here, for a search.
    static QList<Entry> matching(const QList<Entry> &entries, const QString &keyword);

    // The title as the list shows it: "(なし)" for an empty one.
    static QString titleText(const QString &title);
    // The save time: the time of day for a save less than a day before now,
    // the date otherwise.
    static QString timeText(const QDateTime &timestamp, const QDateTime &now);

    // The readable text of a document body in rich text.
    static QString plainText(const QString &body);
};
