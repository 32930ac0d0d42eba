// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace loadscope::soak {

/// Runs the event loop for this long, as between two actions of a user.
inline void runEvents(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Runs the event loop until the condition holds; false when it did not within the limit.
inline bool runEventsUntil(const std::function<bool()>& condition, int limitMilliseconds) {
    constexpr int lookMilliseconds = 10;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limitMilliseconds) return false;
        runEvents(lookMilliseconds);
    }
    return true;
}

} // namespace loadscope::soak
