// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/QtUIThread.h"

#include <QMetaObject>

namespace loadscope {

void QtUIThread::post(std::function<void()> work) {
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

} // namespace loadscope
