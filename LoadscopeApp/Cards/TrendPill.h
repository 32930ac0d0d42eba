// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeCore/Presentation/HistoryTexts.h"

namespace loadscope {

/// How a repository's latest total compares with the one before.
class TrendPill : public Pill {
    Q_OBJECT

public:
    explicit TrendPill(const TrendPillText& text, QWidget* parent = nullptr);

private:
    static Look lookFor(const TrendPillText& pill);
};

} // namespace loadscope
