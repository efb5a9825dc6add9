#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A PulseAudio server of the test's own with one null sink, so that sound
// can be played and watched on a machine without speakers. It points
// PULSE_SERVER at itself; start it before anything opens an audio device.
class PrivateSoundServer
{
public:
    PrivateSoundServer() = default;
    ~PrivateSoundServer();

    // False (with the reason in problem()) when PulseAudio is not installed
    // or does not come up.
    bool start();
    QString problem() const { return m_problem; }

    // The state of the null sink as pactl names it: "RUNNING" while
    // something plays into it, "IDLE" or "SUSPENDED" otherwise.
    QString sinkState() const;
    // How many streams are connected to the sink.
    int streamCount() const;

private:
    QString pactl(const QStringList &arguments) const;

    QTemporaryDir m_dir;
    QProcess m_server;
    QString m_address;
    QString m_problem;
};
