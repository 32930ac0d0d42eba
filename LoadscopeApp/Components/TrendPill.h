// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Components/Pill.h"
#include "LoadscopeCore/History/ScanHistory.h"

namespace loadscope {

/// How a repository's latest total compares with the one before.
class TrendPill : public Pill {
    Q_OBJECT

public:
    TrendPill(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta,
              QWidget* parent = nullptr);

private:
    static Look lookFor(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta);
};

} // namespace loadscope
