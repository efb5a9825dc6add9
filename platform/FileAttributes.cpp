#include "platform/FileAttributes.h"

#include "platform/RuntimeLog.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

constexpr const char *DosAttribName = "user.DOSATTRIB";
constexpr mode_t WriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

quint32 littleEndian32(const char *bytes)
{
    const auto *b = reinterpret_cast<const unsigned char *>(bytes);
    return quint32(b[0]) | quint32(b[1]) << 8 | quint32(b[2]) << 16 | quint32(b[3]) << 24;
}

} // namespace

// Samba writes either the text "0x<hex>" (older releases, still understood)
// or a little-endian blob: a 16-bit version, the 16-bit union switch, then for
// version 1 the attributes, for later versions a 32-bit word of valid fields
// (bit 1: attributes) followed by the attributes.
int FileAttributes::fromDosAttrib(const char *blob, qsizetype size)
{
    if (size >= 3 && blob[0] == '0' && (blob[1] == 'x' || blob[1] == 'X')) {
        bool ok = false;
        const int value = QByteArray(blob + 2, qstrnlen(blob + 2, size - 2)).trimmed().toInt(&ok, 16);
        return ok ? value : Normal;
    }
    if (size < 8)
        return Normal;
    const int version = quint8(blob[0]) | quint8(blob[1]) << 8;
    if (version == 1)
        return int(littleEndian32(blob + 4));
    if (version >= 2 && size >= 12) {
        const bool attributesValid = version == 2 || (littleEndian32(blob + 4) & 0x1);
        return attributesValid ? int(littleEndian32(blob + 8)) : Normal;
    }
    return Normal;
}

std::optional<int> FileAttributes::of(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info;
    if (::stat(name.constData(), &info) != 0)
        return std::nullopt;

    int attributes = (info.st_mode & WriteBits) == 0 ? ReadOnly : Normal;
    char blob[256];
    const ssize_t size = ::getxattr(name.constData(), DosAttribName, blob, sizeof blob);
    if (size > 0)
        attributes |= fromDosAttrib(blob, size) & (ReadOnly | Hidden);
    return attributes;
}

bool FileAttributes::add(const QString &path, int attributes)
{
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        RuntimeLog::note("FileAttributes", QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
        return false;
    }
    const bool stored = add(fd, attributes);
    ::close(fd);
    return stored;
}

bool FileAttributes::add(int fd, int attributes)
{
    struct stat info;
    if (::fstat(fd, &info) != 0)
        return false;

    bool stored = true;
    if (attributes & Hidden) {
        char blob[256];
        const ssize_t size = ::fgetxattr(fd, DosAttribName, blob, sizeof blob);
        const int old = size > 0 ? fromDosAttrib(blob, size) : Normal;
        const QByteArray text = "0x" + QByteArray::number(old | (attributes & (ReadOnly | Hidden)), 16);
        if (::fsetxattr(fd, DosAttribName, text.constData(), text.size(), 0) != 0) {
            // Without a place for "hidden" the file is at least kept read-only.
            RuntimeLog::note("FileAttributes", QStringLiteral("cannot mark a file hidden here, made read-only: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
            attributes |= ReadOnly;
            stored = false;
        }
    }
    if ((attributes & ReadOnly) && ::fchmod(fd, info.st_mode & ~WriteBits & 07777) != 0)
        stored = false;
    return stored;
}
