// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Scoring/OpinionBand.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace loadscope {

struct EmptyStateText {
    std::string title;
    std::string detail;

    /// Until the recorded scans have been read.
    [[nodiscard]] static EmptyStateText historyLoading() {
        return {"Reading the recorded scans…", "They appear here as soon as they have been read."};
    }
    bool operator==(const EmptyStateText&) const = default;
};

/// A capsule that tells how a repository's total moved. Without a trend there is no symbol and no tint but
/// the secondary colour; so it is with an unchanged total, whose symbol is "equal". After a scan with another
/// model it says so instead.
struct TrendPillText {
    std::string text;
    std::string symbol;
    std::optional<OpinionBand> tint; ///< Heavy for a rise, Lean for a fall

    [[nodiscard]] static TrendPillText of(std::optional<TrendDirection> trend,
                                          std::optional<std::int64_t> delta);
    [[nodiscard]] static TrendPillText of(const LeaderboardEntry& entry);
    bool operator==(const TrendPillText&) const = default;
};

/// One row of a list of scans or repositories.
struct HistoryRowText {
    std::optional<std::size_t> rank;
    std::string title;
    std::string detail;
    std::string value;
    OpinionBand band = OpinionBand::lean; ///< tints the value
    std::string valueCaption;
    std::string repositoryPath; ///< which repository the row opens

    /// The row in one line, for assistive technologies, with what stands on its pill.
    [[nodiscard]] std::string spoken(const std::string& pill) const;

    bool operator==(const HistoryRowText&) const = default;
};

} // namespace loadscope
