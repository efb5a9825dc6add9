// Loads arbitrary bytes as a document file: the loader and the header reader
// must take any damaged or foreign file without crashing.
// Fuzz library: lantern_core
#include "documents/Database.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir folder;
    static const QString path = folder.filePath("20090401093015.TXT");

    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();

    const DocumentRecord record = Database::LoadDocument(path, 2);
    const Database::Header header = Database::ReadHeader(path);
    // The header reader gives what the loader gives, for headers that end
    // within what it reads.
    if (size < 4096 && (header.DocumentTitle != record.DocumentTitle || header.Timestamp != record.Timestamp))
        __builtin_trap();
    return 0;
}
