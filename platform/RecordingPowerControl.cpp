#include "platform/RecordingPowerControl.h"

#include <QFile>

RecordingPowerControl::RecordingPowerControl(const QString &path)
    : m_path(path)
{
}

void RecordingPowerControl::record(const QString &request)
{
    m_requests.append(request);
    if (m_path.isEmpty())
        return;
    QFile file(m_path);
    if (file.open(QIODevice::Append | QIODevice::Text))
        file.write(request.toUtf8() + '\n');
}

void RecordingPowerControl::powerOff() { record(QStringLiteral("powerOff")); }
void RecordingPowerControl::powerOffForcedAfter(int seconds) { record(QStringLiteral("powerOffForcedAfter %1").arg(seconds)); }
void RecordingPowerControl::logOff() { record(QStringLiteral("logOff")); }
