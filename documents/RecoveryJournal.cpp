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

const QByteArray FirstLine = QByteArrayLiteral("Lantern journal 1\n");

// A run's name: the moment it started, so that names sort by age, and a
// count for journals started within the same millisecond.
QString newRunName()
{
    static std::atomic<int> started = 0;
    return QStringLiteral("%1-%2")
        .arg(QDateTime::currentMSecsSinceEpoch(), 16, 10, QLatin1Char('0'))
        .arg(started++ % 10000, 4, 10, QLatin1Char('0'));
}

// The origin and the title are one line each (neither holds a line break);
// the rich text is the rest of the file.
QByteArray journalText(const QString &origin, const DocumentRecord &record)
{
    QString title = record.DocumentTitle;
    title.replace(u'\n', u' ');
    // What a save keeps: the first box of the first page, when there is one.
    const bool hasBox = !record.Pages.isEmpty() && !record.Pages.first().Items.isEmpty();
    const QString text = hasBox ? record.Pages.first().Items.first().Text : QString();
    return FirstLine + origin.toUtf8() + '\n' + title.toUtf8() + '\n' + text.toUtf8();
}

std::optional<RecoveryJournal::Entry> readJournal(const QString &path, const QString &run)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    const qsizetype originEnd = bytes.indexOf('\n', FirstLine.size());
    const qsizetype titleEnd = originEnd < 0 ? -1 : bytes.indexOf('\n', originEnd + 1);
    if (!bytes.startsWith(FirstLine) || titleEnd < 0)
        return std::nullopt;
    RecoveryJournal::Entry entry{run, QString::fromUtf8(bytes.mid(FirstLine.size(), originEnd - FirstLine.size())),
                                 Database::NewDocument(Database::BlankTemplate)};
    entry.record.DocumentTitle = QString::fromUtf8(bytes.mid(originEnd + 1, titleEnd - originEnd - 1));
    entry.record.page(1).item(1).Text = QString::fromUtf8(bytes.mid(titleEnd + 1));
    return entry;
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

QString RecoveryJournal::pathOf(const QString &run)
{
    return folder() + u'/' + run + QStringLiteral(".journal");
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
        quint64 taken = 0;
        {
            QMutexLocker locker(&m_lock);
            if (!m_waiting)
                return;
            pending = *m_waiting;
            taken = m_handedIn;
        }
        // The writing itself runs unlocked, so that keep never waits for it.
        QDir().mkpath(folder());
        CheckedSaveFile file(pathOf(m_run));
        const bool opened = file.open();
        if (opened)
            file.write(journalText(pending.origin, pending.record));
        const bool written = opened && file.commit();
        if (!written)
            RuntimeLog::note("RecoveryJournal", QStringLiteral("could not keep the text in %1").arg(folder()));
        {
            QMutexLocker locker(&m_lock);
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
    QFile::remove(pathOf(m_run));
}

std::optional<RecoveryJournal::Entry> RecoveryJournal::leftBehind() const
{
    const QStringList names = QDir(folder()).entryList({QStringLiteral("*.journal")}, QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString &name : names) {
        const QString run = name.chopped(int(QStringLiteral(".journal").size()));
        if (run == m_run)
            continue;
        if (std::optional<Entry> entry = readJournal(pathOf(run), run))
            return entry;
        RuntimeLog::note("RecoveryJournal", QStringLiteral("%1 cannot be read; it stays as it is").arg(name));
    }
    return std::nullopt;
}

void RecoveryJournal::adopt(const QString &run)
{
    if (run == m_run)
        return;
    discard();
    // Renamed, not copied: the text is never in two places or none.
    if (!QFile::rename(pathOf(run), pathOf(m_run)))
        RuntimeLog::note("RecoveryJournal", QStringLiteral("could not take over %1").arg(run));
}
