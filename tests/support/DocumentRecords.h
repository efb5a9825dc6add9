#pragma once

#include "documents/Database.h"

// A blank document with its title, time and the text of its first box.
inline DocumentRecord blankDocument(const QString &title = {}, const QDateTime &time = {}, const QString &text = {})
{
    DocumentRecord record = Database::NewDocument(Database::BlankTemplate);
    record.DocumentTitle = title;
    record.Timestamp = time;
    record.page(1).item(1).Text = text;
    return record;
}
