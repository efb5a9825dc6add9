#pragma once

#include <QObject>

class QSocketNotifier;

// Turns the signals by which the system ends a program (SIGTERM at log-out
// or shut-down, SIGHUP when its terminal goes away, SIGINT) into a Qt signal,
// so that the program can close its document and save its settings as it does
// when the session ends, instead of dying with unsaved work.
class TerminationWatcher : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatcher(QObject *parent = nullptr);
    ~TerminationWatcher() override;

signals:
    void terminationRequested(int signalNumber);

private:
    void readSignal();

    QSocketNotifier *m_notifier = nullptr;
};
