#include "workspace/RecentDocuments.h"

#include "documents/Database.h"
#include "platform/rtf/RtfReader.h"
#include "platform/vb/VbFormat.h"

#include <QTextDocument>

#include <algorithm>

QList<RecentDocuments::Entry> RecentDocuments::list()
{
    QList<Entry> entries;
    const QStringList paths = Database::ListDocuments(Database::OnlyText);
    entries.reserve(paths.size());
    for (const QString &path : paths) {
        const Database::Header header = Database::ReadHeader(path);
        entries.append({path, header.DocumentTitle, header.Timestamp});
    }
    // Newest first; an unreadable time goes last. The name (the first save
    // time) keeps equal times in a fixed order.
    std::stable_sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) {
        if (a.timestamp != b.timestamp)
            return a.timestamp.isValid() && (!b.timestamp.isValid() || a.timestamp > b.timestamp);
        return a.path > b.path;
    });
    return entries;
}

QList<RecentDocuments::Entry> RecentDocuments::matching(const QList<Entry> &entries, const QString &keyword)
{
    const QString wanted = keyword.trimmed();
    if (wanted.isEmpty())
        return entries;
    QList<Entry> found;
    for (const Entry &entry : entries) {
        if (entry.title.contains(wanted, Qt::CaseInsensitive)) {
            found.append(entry);
            continue;
        }
        const DocumentRecord record = Database::LoadDocument(entry.path, Database::Sequential);
        if (record.Pages.isEmpty() || record.Pages.first().Items.isEmpty())
            continue;
        if (plainText(record.Pages.first().Items.first().Text).contains(wanted, Qt::CaseInsensitive))
            found.append(entry);
    }
    return found;
}

QString RecentDocuments::titleText(const QString &title)
{
    return title.isEmpty() ? QStringLiteral("(なし)") : title;
}

QString RecentDocuments::timeText(const QDateTime &timestamp, const QDateTime &now)
{
    if (!timestamp.isValid())
        return QString();
    const qint64 age = timestamp.secsTo(now);
    if (age >= 0 && age < 24 * 60 * 60)
        return VbFormat::dateTime(timestamp, QStringLiteral("Long Time"));
    return VbFormat::dateTime(timestamp, QStringLiteral("Long Date"));
}

QString RecentDocuments::plainText(const QString &body)
{
    if (!body.trimmed().startsWith(u"{\\rtf"))
        return body;
    QTextDocument document;
    if (!RtfReader::read(body, &document))
        return body;
    return document.toPlainText();
}
