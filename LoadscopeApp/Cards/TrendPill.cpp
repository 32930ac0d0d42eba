// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/TrendPill.h"

#include "LoadscopeApp/Text/DisplayText.h"

namespace loadscope {

TrendPill::TrendPill(const TrendPillText& text, QWidget* parent) : Pill(lookFor(text), parent) {}

Pill::Look TrendPill::lookFor(const TrendPillText& pill) {
    return {DisplayText::own(pill.text), DisplayText::own(pill.symbol),
            pill.tint ? ThemeColors::text(*pill.tint) : ThemeColor::secondaryText};
}

} // namespace loadscope
