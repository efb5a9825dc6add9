#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// What a command-line tool prints; empty when it fails or does not finish in time.
inline QString toolOutput(const QString &program, const QStringList &arguments, int timeoutMs = 30000,
                          const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(timeoutMs) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}
