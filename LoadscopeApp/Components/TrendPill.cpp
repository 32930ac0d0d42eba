// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/TrendPill.h"

#include "LoadscopeApp/DisplayText.h"
#include "LoadscopeCore/Presentation/HistoryTexts.h"

namespace loadscope {

TrendPill::TrendPill(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta, QWidget* parent)
    : Pill(lookFor(trend, delta), parent) {}

Pill::Look TrendPill::lookFor(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta) {
    const TrendPillText pill = TrendPillText::of(trend, delta);
    return {DisplayText::own(pill.text), DisplayText::own(pill.symbol),
            pill.tint ? ThemeColors::text(*pill.tint) : ThemeColor::secondaryText};
}

} // namespace loadscope
