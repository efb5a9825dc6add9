#pragma once

#include <QSaveFile>
#include <QString>

// A file written beside the old one and moved over it only once every byte
// of it is on the disk. Qt's own QSaveFile renames the new file into place
// even when its last flush failed, so a full disk or a size limit could
// leave a cut or empty file where a whole one was; here any failed write,
// flush or sync throws the new file away and leaves the old one exactly as
// it was. After the move the folder itself is synced, so that the new name
// survives a power cut too.
class CheckedSaveFile
{
public:
    explicit CheckedSaveFile(const QString &path);

    bool open();
    // A write that fails is remembered; commit then keeps the old file.
    void write(const QByteArray &bytes);
    // The new file's descriptor, until commit.
    int handle() const { return m_file.handle(); }
    // True once the new file has replaced the old one; false leaves the old
    // file untouched and removes the new one.
    bool commit();
    QString errorString() const;

private:
    QSaveFile m_file;
    QString m_failure;
};
