#pragma once

#include "platform/PowerControl.h"

#include <QStringList>

// A power control that only writes down what it was asked to do: one line per
// request ("powerOff", "powerOffForcedAfter 10", "logOff"), kept in memory and,
// when a path is given, appended to that file.
class RecordingPowerControl : public PowerControl
{
public:
    explicit RecordingPowerControl(const QString &path = QString());

    void powerOff() override;
    void powerOffForcedAfter(int seconds) override;
    void logOff() override;

    QStringList requests() const { return m_requests; }

private:
    void record(const QString &request);

    QString m_path;
    QStringList m_requests;
};
