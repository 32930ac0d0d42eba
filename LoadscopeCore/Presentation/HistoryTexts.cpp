// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/HistoryTexts.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ConditionTexts.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

namespace loadscope {

TrendPillText TrendPillText::of(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta) {
    if (!trend || !delta) return {"First scan", "", std::nullopt};
    switch (*trend) {
    case TrendDirection::flat:
        return {"±0", "equal", std::nullopt};
    case TrendDirection::up:
        return {LocaleFormat::signedGrouped(*delta), "arrow.up.right", OpinionBand::heavy};
    case TrendDirection::down:
        return {LocaleFormat::signedGrouped(*delta), "arrow.down.right", OpinionBand::lean};
    }
    return {};
}

TrendPillText TrendPillText::of(const LeaderboardEntry& entry) {
    if (entry.followsOtherModel()) return {ConditionTexts::otherModel, "", std::nullopt};
    return of(entry.trend(), entry.delta());
}

std::string HistoryRowText::spoken(const std::string& pill) const {
    const std::string number = TokenTexts::count(value);
    if (!rank) return title + ", " + detail + ", " + pill + ", " + number + ", " + valueCaption;
    return LocaleFormat::grouped(static_cast<std::int64_t>(*rank)) + ". " + title + ", " + detail + ", " +
           number + ", " + valueCaption + ", " + pill;
}

} // namespace loadscope
