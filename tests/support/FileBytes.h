#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// A file's whole content; empty when it cannot be read.
inline QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes (or, with `append`, adds) the bytes; false when not all were written.
inline bool writeFileBytes(const QString &path, const QByteArray &bytes, bool append = false)
{
    QFile file(path);
    return file.open(append ? QIODevice::Append : QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
