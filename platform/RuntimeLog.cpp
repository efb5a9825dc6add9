#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMutex>

#include <cstdio>

Q_LOGGING_CATEGORY(lcRuntime, "lantern.runtime")

namespace {

// The file is opened by the first message, so that a run with nothing to
// say creates no folder and no file on its way to the first window.
// Messages come from any thread.
QMutex logLock;
QFile *logFile = nullptr;
bool started = false;
QtMessageHandler previousHandler = nullptr;

QFile *openLogFile()
{
    QDir().mkpath(XdgPaths::stateHome() + QStringLiteral("/lantern"));
    auto *file = new QFile(RuntimeLog::filePath());
    // Keep the log from growing without end: start afresh past one megabyte.
    const QIODevice::OpenMode mode = file->size() > 1024 * 1024 ? QIODevice::WriteOnly : QIODevice::Append;
    if (!file->open(mode | QIODevice::Text)) {
        std::fprintf(stderr, "lantern: cannot open the log file %s\n", qPrintable(RuntimeLog::filePath()));
        delete file;
        return nullptr;
    }
    return file;
}

void writeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    {
        QMutexLocker locker(&logLock);
        if (!logFile)
            logFile = openLogFile();
        if (logFile) {
            const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8() + ' '
                + (context.category ? QByteArray(context.category) : QByteArray("default")) + ": "
                + message.toUtf8() + '\n';
            logFile->write(line);
            logFile->flush();
        }
    }
    if (previousHandler)
        previousHandler(type, context, message);
}

} // namespace

QString RuntimeLog::filePath()
{
    return XdgPaths::stateHome() + QStringLiteral("/lantern/lantern.log");
}

void RuntimeLog::start()
{
    if (started)
        return;
    started = true;
    previousHandler = qInstallMessageHandler(writeMessage);
}

bool RuntimeLog::isActive()
{
    return started;
}

void RuntimeLog::note(const char *where, const QString &what)
{
    qCWarning(lcRuntime).noquote() << where << what;
}
