#include "platform/CheckedSaveFile.h"

#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

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

} // namespace

CheckedSaveFile::CheckedSaveFile(const QString &path)
    : m_file(path)
{
}

bool CheckedSaveFile::open()
{
    return m_file.open(QIODevice::WriteOnly);
}

void CheckedSaveFile::write(const QByteArray &bytes)
{
    if (!m_failure.isEmpty())
        return;
    if (m_file.write(bytes) != bytes.size())
        m_failure = m_file.errorString();
}

bool CheckedSaveFile::commit()
{
    if (m_failure.isEmpty() && !m_file.flush())
        m_failure = m_file.errorString();
    if (m_failure.isEmpty() && ::fsync(m_file.handle()) != 0)
        m_failure = QString::fromLocal8Bit(std::strerror(errno));
    if (!m_failure.isEmpty()) {
        m_file.cancelWriting();
        m_file.commit();   // only removes the new file
        return false;
    }
    if (!m_file.commit()) {
        m_failure = m_file.errorString();
        return false;
    }
    syncFolder(m_file.fileName());
    return true;
}

QString CheckedSaveFile::errorString() const
{
    return m_failure.isEmpty() ? m_file.errorString() : m_failure;
}
