#include "documents/RecoveryJournal.h"

#include "documents/Database.h"
#include "platform/CheckedSaveFile.h"
#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMutexLocker>

#include <atomic>

namespace {

// A run's name: the moment it started, so that names sort by age, and a
// count for journals started within the same millisecond.
QString newRunName()
{
    static std::atomic<int> started = 0;
    return QStringLiteral("%1-%2")
        .arg(QDateTime::currentMSecsSinceEpoch(), 16, 10, QLatin1Char('0'))
        .arg(started++ % 10000, 4, 10, QLatin1Char('0'));
}

QString readOrigin(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

bool writeOrigin(const QString &path, const QString &origin)
{
    CheckedSaveFile file(path);
    if (!file.open())
        return false;
    file.write(origin.toUtf8());
    return file.commit();
}

} // namespace

RecoveryJournal::RecoveryJournal(QObject *parent)
    : QObject(parent)
    , m_run(newRunName())
{
    // One writer, so that the texts reach the disk in the order they came.
    m_writer.setMaxThreadCount(1);
}

RecoveryJournal::~RecoveryJournal()
{
    flush();
}

QString RecoveryJournal::folder()
{
    return XdgPaths::stateHome() + QStringLiteral("/lantern/recovery");
}

QString RecoveryJournal::textPath(const QString &run) const
{
    return folder() + u'/' + run + QStringLiteral(".TXT");
}

QString RecoveryJournal::originPath(const QString &run) const
{
    return folder() + u'/' + run + QStringLiteral(".origin");
}

void RecoveryJournal::keep(const QString &origin, const DocumentRecord &record)
{
    QMutexLocker locker(&m_lock);
    const bool writerIdle = !m_waiting.has_value();
    // The record's strings are shared, not copied: this costs next to nothing.
    m_waiting = Pending{origin, record};
    ++m_handedIn;
    if (writerIdle)
        m_writer.start([this] { writeWaiting(); });
}

void RecoveryJournal::writeWaiting()
{
    for (;;) {
        Pending pending;
        bool originChanged = false;
        quint64 taken = 0;
        {
            QMutexLocker locker(&m_lock);
            if (!m_waiting)
                return;
            pending = *m_waiting;
            taken = m_handedIn;
            originChanged = m_writtenOrigin != pending.origin;
        }
        // The writing itself runs unlocked, so that keep never waits for it.
        QDir().mkpath(folder());
        // The origin first: a text on the disk always knows whose it is.
        bool written = !originChanged || writeOrigin(originPath(m_run), pending.origin);
        written = written && Database::SaveDocument(textPath(m_run), pending.record, Database::Sequential);
        if (!written)
            RuntimeLog::note("RecoveryJournal", QStringLiteral("could not keep the text in %1").arg(folder()));
        {
            QMutexLocker locker(&m_lock);
            if (written && originChanged)
                m_writtenOrigin = pending.origin;
            // Done, unless a newer text came while this one was written.
            if (m_handedIn == taken)
                m_waiting.reset();
        }
        if (written)
            emit kept();
    }
}

void RecoveryJournal::flush()
{
    m_writer.waitForDone();
}

void RecoveryJournal::discard()
{
    {
        QMutexLocker locker(&m_lock);
        m_waiting.reset();
    }
    flush();
    QFile::remove(textPath(m_run));
    QFile::remove(originPath(m_run));
    QMutexLocker locker(&m_lock);
    m_writtenOrigin.reset();
}

std::optional<RecoveryJournal::Entry> RecoveryJournal::leftBehind() const
{
    QStringList names = QDir(folder()).entryList({QStringLiteral("*.TXT")}, QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString &name : std::as_const(names)) {
        const QString run = name.chopped(4);
        if (run == m_run)
            continue;
        bool readable = false;
        DocumentRecord record = Database::LoadDocument(textPath(run), Database::Sequential, &readable);
        if (!readable) {
            RuntimeLog::note("RecoveryJournal", QStringLiteral("%1 cannot be read; it stays as it is").arg(name));
            continue;
        }
        return Entry{run, readOrigin(originPath(run)), record};
    }
    return std::nullopt;
}

void RecoveryJournal::adopt(const QString &run)
{
    if (run == m_run)
        return;
    discard();
    // Renamed, not copied: the text is never in two places or none.
    const bool hasOrigin = QFile::exists(originPath(run));
    if (hasOrigin && !QFile::rename(originPath(run), originPath(m_run)))
        return;
    if (!QFile::rename(textPath(run), textPath(m_run))) {
        if (hasOrigin)
            QFile::rename(originPath(m_run), originPath(run));
        return;
    }
    QMutexLocker locker(&m_lock);
    m_writtenOrigin = hasOrigin ? std::optional<QString>(readOrigin(originPath(m_run))) : std::nullopt;
}
