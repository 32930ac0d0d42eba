// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"

namespace loadscope {

/// Adds up counts and keeps how closely the sum is known: bounds alone add up to a bound, a bound or a rough
/// count among others makes the sum a rough one, and a rounded one makes it rounded.
class CountSum {
public:
    void add(const PreciseCount& count) {
        sum_.add(count.tokens);
        hasBounds_ = hasBounds_ || count.precision == CountPrecision::below;
        hasOthers_ = hasOthers_ || count.precision != CountPrecision::below;
        isAbout_ = isAbout_ || count.precision == CountPrecision::about;
        isRounded_ = isRounded_ || count.precision == CountPrecision::rounded;
    }

    [[nodiscard]] PreciseCount value() const { return {sum_.value(), precision()}; }

private:
    [[nodiscard]] CountPrecision precision() const {
        if (hasBounds_ && !hasOthers_) return CountPrecision::below;
        if (hasBounds_ || isAbout_) return CountPrecision::about;
        return isRounded_ ? CountPrecision::rounded : CountPrecision::exact;
    }

    SaturatingSum sum_;
    bool hasBounds_ = false;
    bool hasOthers_ = false;
    bool isAbout_ = false;
    bool isRounded_ = false;
};

} // namespace loadscope
