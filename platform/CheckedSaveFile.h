#pragma once

#include <QFile>
#include <QString>

// A file written beside the old one and moved over it only once every byte
// of it is on the disk. Qt's own QSaveFile renames the new file into place
// even when its last flush had failed, so a full disk or a size limit could
// leave a cut or empty file where a whole one was; here any failed write,
// flush or sync throws the new file away and leaves the old one exactly as
// it was. After the move the folder itself is synced, so that the new name
// survives a power cut too.
//
// The new file is written under a hidden name of its own (see
// unfinishedName). A process killed before the move leaves it behind: the
// document lists pass over such names, and the next save into the same
// folder removes them.
class CheckedSaveFile
{
public:
    explicit CheckedSaveFile(const QString &path);
    // A file never committed is removed.
    ~CheckedSaveFile();
    CheckedSaveFile(const CheckedSaveFile &) = delete;
    CheckedSaveFile &operator=(const CheckedSaveFile &) = delete;

    bool open();
    // A write that fails is remembered; commit then keeps the old file.
    void write(const QByteArray &bytes);
    // The new file's descriptor, until commit.
    int handle() const { return m_file.handle(); }
    // True once the new file has replaced the old one; false leaves the old
    // file untouched and removes the new one.
    bool commit();
    QString errorString() const;

    // The name the new file has until the move: "." + the file's name +
    // ".saving", hidden and never the name of a document.
    static QString unfinishedName(const QString &fileName);
    static bool isUnfinished(const QString &fileName);

private:
    void discard();
    void removeLeftovers(const QString &folder) const;

    QString m_path;
    QFile m_file;
    QString m_failure;
};
