#pragma once

#include <QString>

#include <optional>

// The DOS attributes "read-only" and "hidden" of a file, as Linux keeps them.
// Read-only is a file without any write permission bit, so every program sees
// it. Hidden is kept as Samba keeps it, in the extended attribute
// "user.DOSATTRIB": a file shared to Windows from here shows as hidden there,
// and a file marked by Samba counts as hidden here. A file system without
// user extended attributes cannot hold "hidden": such a file is only made
// read-only, and the loss is noted in the runtime log.
class FileAttributes
{
public:
    enum Attribute {
        Normal = 0x00,
        ReadOnly = 0x01,
        Hidden = 0x02,
    };

    // The attributes of a file, or nothing when the file cannot be asked
    // (it does not exist any more, or it cannot be reached).
    static std::optional<int> of(const QString &path);

    // Adds attributes to a file; returns whether all of them were stored.
    static bool add(const QString &path, int attributes);
    // The same for a file open as the descriptor fd.
    static bool add(int fd, int attributes);

private:
    static int fromDosAttrib(const char *blob, qsizetype size);
};
