// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/UIThread.h"

#include <QObject>

namespace loadscope {

/// Hands work to the thread of the event loop through queued calls. What is still queued when it is destroyed
/// is dropped.
class QtUIThread : public QObject, public UIThread {
    Q_OBJECT

public:
    using QObject::QObject;
    void post(std::function<void()> work) override;
};

} // namespace loadscope
