#include "platform/RuntimeLog.h"
#include "platform/XdgPaths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <cstdio>

Q_LOGGING_CATEGORY(lcRuntime, "lantern.runtime")

namespace {

QFile *logFile = nullptr;
QtMessageHandler previousHandler = nullptr;

void writeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (logFile && logFile->isOpen()) {
        const QByteArray line = QDateTime::currentDateTime().toString(Qt::ISODateWithMs).toUtf8() + ' '
            + (context.category ? QByteArray(context.category) : QByteArray("default")) + ": "
            + message.toUtf8() + '\n';
        logFile->write(line);
        logFile->flush();
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
    if (logFile)
        return;
    QDir().mkpath(XdgPaths::stateHome() + QStringLiteral("/lantern"));
    auto *file = new QFile(filePath());
    // Keep the log from growing without end: start afresh past one megabyte.
    const QIODevice::OpenMode mode = file->size() > 1024 * 1024 ? QIODevice::WriteOnly : QIODevice::Append;
    if (!file->open(mode | QIODevice::Text)) {
        std::fprintf(stderr, "lantern: cannot open the log file %s\n", qPrintable(filePath()));
        delete file;
        return;
    }
    logFile = file;
    previousHandler = qInstallMessageHandler(writeMessage);
}

bool RuntimeLog::isActive()
{
    return logFile != nullptr;
}

void RuntimeLog::note(const char *where, const QString &what)
{
    qCWarning(lcRuntime).noquote() << where << what;
}
