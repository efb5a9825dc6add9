#include "platform/HelpViewer.h"
#include "platform/RuntimeLog.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>

qint64 HelpViewer::s_taskNumber = 0;

qint64 HelpViewer::taskNumber()
{
    return s_taskNumber;
}

bool HelpViewer::isRunning(qint64 pid)
{
    return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) == 0 && QFileInfo::exists(QStringLiteral("/proc/%1").arg(pid));
}

void HelpViewer::bringToFront(qint64 pid)
{
    // The window manager decides about raising windows; xdotool asks it the
    // way a click on the task bar would.
    const QString xdotool = QStandardPaths::findExecutable(QStringLiteral("xdotool"));
    if (xdotool.isEmpty())
        return;
    QProcess::startDetached(xdotool, {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--pid"), QString::number(pid), QStringLiteral("windowactivate")});
}

void HelpViewer::show(const QString &programFolder)
{
    if (isRunning(s_taskNumber)) {
        bringToFront(s_taskNumber);
        return;
    }

    const QString collection = QDir(programFolder).filePath(QStringLiteral("LANTERN.qhc"));
    QString assistant = QStandardPaths::findExecutable(QStringLiteral("assistant"), {QStringLiteral("/usr/lib/qt6/bin")});
    if (assistant.isEmpty())
        assistant = QStandardPaths::findExecutable(QStringLiteral("assistant-qt6"));

    qint64 pid = 0;
    if (!assistant.isEmpty() && QFileInfo::exists(collection)
        && QProcess::startDetached(assistant, {QStringLiteral("-collectionFile"), collection}, programFolder, &pid)) {
        s_taskNumber = pid;
        return;
    }

    // No help viewer: the pages are plain HTML, so the browser can show them.
    const QString index = QDir(programFolder).filePath(QStringLiteral("help/index.html"));
    if (QProcess::startDetached(QStringLiteral("xdg-open"), {index}, programFolder, &pid))
        s_taskNumber = pid;
    else
        RuntimeLog::note("HelpViewer", QStringLiteral("no help viewer could be started"));
}
