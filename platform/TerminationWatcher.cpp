#include "platform/TerminationWatcher.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int signalPipe[2] = {-1, -1};

// Only async-signal-safe work here: hand the number to the event loop.
void onSignal(int number)
{
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[0], &byte, 1);
}

} // namespace

TerminationWatcher::TerminationWatcher(QObject *parent)
    : QObject(parent)
{
    if (signalPipe[0] < 0 && ::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    m_notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationWatcher::readSignal);

    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : {SIGTERM, SIGHUP, SIGINT})
        sigaction(number, &action, nullptr);
}

TerminationWatcher::~TerminationWatcher()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (int number : {SIGTERM, SIGHUP, SIGINT})
        sigaction(number, &action, nullptr);
}

void TerminationWatcher::readSignal()
{
    char byte = 0;
    if (::read(signalPipe[1], &byte, 1) == 1)
        emit terminationRequested(static_cast<unsigned char>(byte));
}
