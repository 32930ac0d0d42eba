// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/ClosingLimit.h"

#include "LoadscopeCore/Process/ChildGroups.h"

#include <csignal>
#include <sys/time.h>
#include <unistd.h>

namespace loadscope::ClosingLimit {
namespace {

constexpr suseconds_t limitMicroseconds = 900'000;

volatile std::sig_atomic_t codeAtLimit = 0;

extern "C" void onLimit(int) {
    ChildGroups::killAll();
    _exit(codeAtLimit);
}

} // namespace

void begin(int exitCode) {
    codeAtLimit = exitCode;
    struct sigaction action = {};
    action.sa_handler = onLimit;
    sigemptyset(&action.sa_mask);
    sigaction(SIGALRM, &action, nullptr);
    const itimerval once{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_usec = limitMicroseconds}};
    setitimer(ITIMER_REAL, &once, nullptr);
}

} // namespace loadscope::ClosingLimit
