// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/QtUIThread.h"

namespace loadscope {

QtUIThread::QtUIThread(QObject* parent) : QObject(parent) {
    connect(this, &QtUIThread::posted, this, &QtUIThread::runNext, Qt::QueuedConnection);
}

void QtUIThread::post(std::function<void()> work) {
    {
        const std::lock_guard guard(mutex_);
        works_.push_back(std::move(work));
    }
    Q_EMIT posted();
}

void QtUIThread::runNext() {
    std::function<void()> work;
    {
        const std::lock_guard guard(mutex_);
        work = std::move(works_.front());
        works_.pop_front();
    }
    work();
}

} // namespace loadscope
