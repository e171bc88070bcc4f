#include "UnixSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwell::platform {

namespace {
int signalPipe[2] = {-1, -1};

void onSignal(int number)
{
    const char byte = char(number);
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}
} // namespace

UnixSignals::UnixSignals(QObject *parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0)
        qFatal("Could not create the signal socket pair");
    m_notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSignals::readSignal);
    struct sigaction action
    {
    };
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(number, &action, nullptr);
}

UnixSignals::~UnixSignals()
{
    for (int number : {SIGTERM, SIGINT, SIGHUP})
        ::signal(number, SIG_DFL);
    ::close(signalPipe[0]);
    ::close(signalPipe[1]);
    signalPipe[0] = signalPipe[1] = -1;
}

void UnixSignals::readSignal()
{
    char byte = 0;
    if (::read(signalPipe[0], &byte, 1) == 1)
        Q_EMIT terminationRequested(int(byte));
}

} // namespace tarnwell::platform
