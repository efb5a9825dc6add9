#include "documents/Database.h"

#include "app/SettingsStore.h"
#include "documents/DocumentEncoding.h"
#include "platform/CheckedSaveFile.h"
#include "platform/CodePage932.h"
#include "platform/ErrorTrap.h"
#include "platform/FileAttributes.h"
#include "platform/RuntimeLog.h"
#include "platform/vb/VbInput.h"
#include "platform/vb/VbWrite.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

// The recent-documents list reads this much of a file, and more only for a
// header that does not end inside it, up to the last limit.
constexpr qsizetype HeaderChunk = 4096;
constexpr qsizetype HeaderLimit = 64 * 1024;

bool isSequential(qint16 mode)
{
    return (mode & ~Database::ReadOnlyHidden) == Database::Sequential;
}

// Input # of the title and the time: a field that fails keeps what it held.
void readHeader(VbInput &input, QString *title, QDateTime *timestamp)
{
    ErrorTrap::run("LoadDocument", [&] { *title = DocumentEncoding::decodeTitle(input.readString()); });
    ErrorTrap::run("LoadDocument", [&] { *timestamp = input.readDate(); });
}

QByteArray headerLine(const DocumentRecord &record)
{
    return VbWrite::string(DocumentEncoding::encodeTitle(record.DocumentTitle)) + ','
        + VbWrite::date(record.Timestamp) + VbWrite::LineEnd;
}

bool writeText(const QString &path, const DocumentRecord &record, bool keepHidden)
{
    CheckedSaveFile file(path);
    if (!file.open()) {
        RuntimeLog::note("SaveDocument", QStringLiteral("%1: %2").arg(path, file.errorString()));
        return false;
    }
    file.write(headerLine(record));
    // A document without a first box has no body line at all.
    ErrorTrap::run("SaveDocument", [&] {
        file.write(DocumentEncoding::encodeBody(record.page(1).item(1).Text) + VbWrite::LineEnd);
    });
    if (keepHidden)
        FileAttributes::add(file.handle(), FileAttributes::Hidden);
    // On the disk whole, then moved over the old file; on any failure the
    // old file stays as it was.
    if (!file.commit()) {
        RuntimeLog::note("SaveDocument", QStringLiteral("%1: %2").arg(path, file.errorString()));
        return false;
    }
    return true;
}

} // namespace

DocumentRecord Database::NewDocument(qint16 templateNumber)
{
    DocumentRecord record;
    record.PaperSetting1 = 10;
    record.PaperSetting2 = 7;
    record.PaperSetting3 = 1;
    record.PaperSetting4 = 1;
    record.PaperSetting5 = -3;
    record.Copies = 1;
    record.Zoom = 100;
    record.PageCount = 1;
    record.Pages.resize(1);

    if (templateNumber == BlankTemplate) {
        // The writing area of an A4 portrait sheet: 21.0 x 29.7 less margins
        // of 1.5 at the sides and 2.0 at top and bottom.
        DocumentItem box;
        box.Unit = 0;
        box.Left = 1.5f;
        box.Top = 2.0f;
        box.Width = 18.0f;
        box.Height = 25.7f;
        box.Kind = DocumentItem::RichText;
        DocumentPage &page = record.page(1);
        page.ItemCount = 1;
        page.Items = {box};
    }
    return record;
}

DocumentRecord Database::LoadDocument(const QString &path, qint16 mode, bool *readable)
{
    LoadOutcome outcome = LoadOutcome::Unreadable;
    DocumentRecord record = LoadDocument(path, mode, &outcome);
    if (readable)
        *readable = outcome == LoadOutcome::Read;
    return record;
}

DocumentRecord Database::LoadDocument(const QString &path, qint16 mode, LoadOutcome *outcome)
{
    DocumentRecord record = NewDocument(BlankTemplate);
    *outcome = LoadOutcome::Unreadable;
    if (!isSequential(mode)) {
        RuntimeLog::note("LoadDocument", QStringLiteral("open mode %1 is not supported").arg(mode));
        return record;
    }

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        RuntimeLog::note("LoadDocument", QStringLiteral("%1: %2").arg(path, file.errorString()));
        return record;
    }
    // One byte past the limit tells a file that is too large, however it grew.
    const QByteArray data = file.read(LargestDocumentBytes + 1);
    if (data.size() > LargestDocumentBytes) {
        RuntimeLog::note("LoadDocument", QStringLiteral("%1: more than %2 bytes, too large to open").arg(path).arg(LargestDocumentBytes));
        *outcome = LoadOutcome::TooLarge;
        return record;
    }
    if (file.error() != QFileDevice::NoError)
        RuntimeLog::note("LoadDocument", QStringLiteral("%1: %2").arg(path, file.errorString()));
    else
        *outcome = LoadOutcome::Read;

    VbInput input(data);
    readHeader(input, &record.DocumentTitle, &record.Timestamp);

    // Line Input # until the end. The lines are joined with a line end between
    // them: in rich text it ends a control word that closes a line ("\par",
    // then "Second" on the next line) and is otherwise no text at all.
    QString &text = record.page(1).item(1).Text;
    text.clear();
    for (bool first = true; !input.atEnd(); first = false) {
        if (!first)
            text += QLatin1String("\r\n");
        text += CodePage932::decode(input.readLine());
    }
    return record;
}

Database::Header Database::ReadHeader(const QString &path)
{
    Header header;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return header;

    QByteArray head;
    for (qsizetype wanted = HeaderChunk;; wanted *= 4) {
        head += file.read(wanted - head.size());
        header = Header();
        VbInput input(head);
        readHeader(input, &header.DocumentTitle, &header.Timestamp);
        if (!input.ranOut() || file.atEnd() || head.size() >= HeaderLimit)
            return header;
    }
}

bool Database::SaveDocument(const QString &path, const DocumentRecord &record, qint16 mode)
{
    if (!isSequential(mode)) {
        RuntimeLog::note("SaveDocument", QStringLiteral("open mode %1 is not supported").arg(mode));
        return false;
    }

    const std::optional<int> old = FileAttributes::of(path);
    bool written = false;
    if (old && (*old & FileAttributes::ReadOnly))
        RuntimeLog::note("SaveDocument", QStringLiteral("%1 is read-only and stays as it is").arg(path));
    else
        written = writeText(path, record, old && (*old & FileAttributes::Hidden));

    if ((mode & ReadOnlyHidden) && QFile::exists(path))
        FileAttributes::add(path, FileAttributes::ReadOnly | FileAttributes::Hidden);
    return written;
}

QStringList Database::ListDocuments(qint32 flags)
{
    QStringList paths;
    const QString folder = SettingsStore::DocumentFolder();
    if (!QDir(folder).exists())
        return paths;

    QString pattern = QStringLiteral("*");
    if (flags & OnlyText)
        pattern = QStringLiteral("*.TXT");
    else if (flags & OnlyDocument)
        pattern = QStringLiteral("*.Document");

    // No sorting: the names come in the order the file system keeps them.
    // Without QDir::CaseSensitive the pattern matches in any letter case.
    QDirIterator names(folder, {pattern}, QDir::Files | QDir::Hidden);
    while (names.hasNext()) {
        const QString path = names.next();
        // A save cut short leaves its unfinished file: no document.
        if (CheckedSaveFile::isUnfinished(names.fileName()))
            continue;
        if (flags & OnlyReadOnlyOrHidden) {
            const std::optional<int> attributes = FileAttributes::of(path);
            if (!attributes) {
                RuntimeLog::note("ListDocuments", QStringLiteral("%1 cannot be asked; the list ends here").arg(path));
                break;
            }
            if (!(*attributes & (FileAttributes::ReadOnly | FileAttributes::Hidden)))
                continue;
        }
        paths.append(path);
    }
    return paths;
}

QString Database::NewFileName(const QDateTime &saveTime)
{
    return SettingsStore::DocumentFolder() + u'/' + saveTime.toString(u"yyyyMMddHHmmss") + QStringLiteral(".TXT");
}

QDateTime Database::FreeSaveTime(const QDateTime &wanted)
{
    QDateTime time(wanted.date(), QTime(wanted.time().hour(), wanted.time().minute(), wanted.time().second()));
    // The folder holds one file a second at the very most: this ends.
    while (QFileInfo::exists(NewFileName(time)))
        time = time.addSecs(1);
    return time;
}

DatabaseSettings Database::LoadDatabaseSettings()
{
    return DatabaseSettings::load();
}

void Database::SaveDatabaseSettings(const DatabaseSettings &settings)
{
    DatabaseSettings::save(settings);
}
