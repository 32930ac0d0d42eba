// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr std::array handled{SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void onTermination(int) {
    const int saved = errno;
    const char byte = 0;
    // The pipe holds more bytes than anyone sends signals; a full one has been noticed already.
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = saved;
}

/// `nohup` ignores the hang-up for us; that stays.
bool isLeftAlone(int signal) {
    struct sigaction action = {};
    return signal == SIGHUP && sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void handle(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : handled)
        if (!isLeftAlone(signal)) sigaction(signal, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {
    if (pipe(ends_) != 0) return;
    for (const int end : ends_) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    writeEnd = ends_[1];
    notifier_ = new QSocketNotifier(ends_[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        QCoreApplication::quit();
    });
    handle(onTermination);
}

TerminationSignals::~TerminationSignals() {
    handle(SIG_DFL);
    writeEnd = -1;
    for (const int end : ends_) {
        if (end >= 0) close(end);
    }
}

} // namespace loadscope
