// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A normal end when the system asks for one.
#include "app/unixsignals.h"

#include <QApplication>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

int sockets[2] = {-1, -1};

// Only write() is allowed here; the event loop does the rest.
void wakeEventLoop(int)
{
    const char byte = 1;
    const ssize_t written = ::write(sockets[0], &byte, sizeof byte);
    static_cast<void>(written);
}

} // namespace

UnixSignals::UnixSignals(QObject *parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, sockets) != 0) {
        return;
    }
    notifier.reset(new QSocketNotifier(sockets[1], QSocketNotifier::Read));
    connect(notifier.data(), &QSocketNotifier::activated, this, &UnixSignals::endNormally);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        action.sa_handler = wakeEventLoop;
        sigemptyset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

UnixSignals::~UnixSignals()
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(number, SIG_DFL);
    }
    notifier.reset();
    for (int &socket : sockets) {
        ::close(socket);
        socket = -1;
    }
}

bool UnixSignals::endRequested() const
{
    return requested;
}

void UnixSignals::endNormally()
{
    char byte = 0;
    while (::read(sockets[1], &byte, sizeof byte) > 0) {
    }
    requested = true;
    // Ends the loop of an open message box as well as the main one.
    QCoreApplication::quit();
}
