#include "platform/CheckedSaveFile.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QMutex>
#include <QSet>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr QLatin1StringView UnfinishedEnd(".saving");

// Files this process is writing right now: never leftovers. Files are
// written from more than one thread (the recovery journal has its own).
QMutex beingWrittenLock;
QSet<QString> &filesBeingWritten()
{
    static QSet<QString> files;
    return files;
}

void noteBeingWritten(const QString &path, bool writing)
{
    QMutexLocker locker(&beingWrittenLock);
    if (writing)
        filesBeingWritten().insert(path);
    else
        filesBeingWritten().remove(path);
}

bool isBeingWritten(const QString &path)
{
    QMutexLocker locker(&beingWrittenLock);
    return filesBeingWritten().contains(path);
}

// The folder's entry for the new name, on the disk.
void syncFolder(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

CheckedSaveFile::CheckedSaveFile(const QString &path)
    : m_path(path)
{
}

CheckedSaveFile::~CheckedSaveFile()
{
    if (m_file.isOpen())
        discard();
}

QString CheckedSaveFile::unfinishedName(const QString &fileName)
{
    return QLatin1Char('.') + fileName + UnfinishedEnd;
}

bool CheckedSaveFile::isUnfinished(const QString &fileName)
{
    return fileName.size() > 1 + UnfinishedEnd.size() && fileName.startsWith(u'.') && fileName.endsWith(UnfinishedEnd);
}

bool CheckedSaveFile::open()
{
    // A link is written through, as the file it points to is the one meant.
    QFileInfo target(m_path);
    if (target.isSymLink())
        target = QFileInfo(target.symLinkTarget());
    m_path = target.absoluteFilePath();
    const QString folder = target.absolutePath();
    removeLeftovers(folder);

    m_file.setFileName(folder + u'/' + unfinishedName(target.fileName()));
    QFile::remove(m_file.fileName());
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    noteBeingWritten(m_file.fileName(), true);
    // The new file takes the old one's permissions, as the old file it replaces.
    if (target.exists())
        m_file.setPermissions(target.permissions());
    return true;
}

void CheckedSaveFile::write(const QByteArray &bytes)
{
    if (!m_failure.isEmpty())
        return;
    if (!m_file.isOpen())
        m_failure = QStringLiteral("the file is not open");
    else if (m_file.write(bytes) != bytes.size())
        m_failure = m_file.errorString();
}

bool CheckedSaveFile::commit()
{
    if (m_failure.isEmpty() && !m_file.isOpen())
        m_failure = QStringLiteral("the file is not open");
    if (m_failure.isEmpty() && !m_file.flush())
        m_failure = m_file.errorString();
    if (m_failure.isEmpty() && ::fsync(m_file.handle()) != 0)
        m_failure = systemError();
    if (m_failure.isEmpty()) {
        m_file.close();
        if (m_file.error() != QFileDevice::NoError)
            m_failure = m_file.errorString();
    }
    if (m_failure.isEmpty()
        && std::rename(QFile::encodeName(m_file.fileName()).constData(), QFile::encodeName(m_path).constData()) != 0)
        m_failure = systemError();
    if (!m_failure.isEmpty()) {
        discard();
        return false;
    }
    noteBeingWritten(m_file.fileName(), false);
    syncFolder(m_path);
    return true;
}

QString CheckedSaveFile::errorString() const
{
    return m_failure.isEmpty() ? m_file.errorString() : m_failure;
}

void CheckedSaveFile::discard()
{
    m_file.close();
    QFile::remove(m_file.fileName());
    noteBeingWritten(m_file.fileName(), false);
}

void CheckedSaveFile::removeLeftovers(const QString &folder) const
{
    QDirIterator names(folder, {QStringLiteral(".*") + UnfinishedEnd}, QDir::Files | QDir::Hidden | QDir::System);
    while (names.hasNext()) {
        const QString path = names.next();
        if (isUnfinished(names.fileName()) && !isBeingWritten(path))
            QFile::remove(path);
    }
}
