// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UIThread.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace loadscope {

/// Hands work to the thread of the event loop, one piece for each queued signal. The work waits in a queue of
/// our own, whose lock tells the thread sanitizer in what order things happen; the toolkit's own locks are
/// hidden from it. What is still queued when this is destroyed is dropped.
class QtUIThread : public QObject, public UIThread {
    Q_OBJECT

public:
    explicit QtUIThread(QObject* parent = nullptr);
    void post(std::function<void()> work) override;

Q_SIGNALS:
    void posted();

private:
    void runNext();

    std::mutex mutex_;
    std::deque<std::function<void()>> works_;
};

} // namespace loadscope
