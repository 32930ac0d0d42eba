// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/Attribution.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <unordered_map>

namespace loadscope {

std::string rawValue(Provenance provenance) {
    switch (provenance) {
    case Provenance::claudeReported:
        return "claudeReported";
    case Provenance::selfReported:
        return "selfReported";
    case Provenance::localEstimate:
        return "localEstimate";
    case Provenance::remainder:
        break;
    }
    return "remainder";
}

std::string sourceLabel(Provenance provenance) {
    switch (provenance) {
    case Provenance::claudeReported:
        return "reported by Claude";
    case Provenance::selfReported:
        return "reported by Claude Code's /context";
    case Provenance::localEstimate:
        return "measured on disk at ~4 bytes/token (estimate)";
    case Provenance::remainder:
        break;
    }
    return "derived: total minus attributed";
}

std::string SlabAttribution::id() const {
    return std::to_string(ordinal) + "|" + rawValue(provenance) + "|" + name;
}

namespace SlabAttributor {
namespace {

/// A local estimate and how much of it no category has used up yet.
struct Explanation {
    std::vector<std::string> normalizedNames;
    std::int64_t capacity;

    explicit Explanation(const LocalCategoryEstimate& estimate) : capacity(estimate.tokens) {
        normalizedNames.push_back(normalize(estimate.name));
        for (const std::string& term : estimate.matchTerms)
            normalizedNames.push_back(normalize(term));
    }

    [[nodiscard]] bool matches(const std::string& category) const {
        return std::find(normalizedNames.begin(), normalizedNames.end(), category) != normalizedNames.end();
    }
};

class Rows {
public:
    void add(std::string name, std::int64_t tokens, Provenance provenance) {
        rows_.push_back({std::move(name), tokens, provenance, static_cast<std::int64_t>(rows_.size())});
    }

    void addCategory(const SelfReportedSlab& category, std::vector<Explanation>& explanations) {
        const std::string normalized = normalize(category.name);
        std::int64_t left = std::max<std::int64_t>(category.tokens, 0);
        bool matched = false;
        for (Explanation& explanation : explanations) {
            if (!explanation.matches(normalized)) continue;
            matched = true;
            const std::int64_t explained = std::min(left, explanation.capacity);
            explanation.capacity -= explained;
            left -= explained;
        }
        if (!matched) {
            add(category.name, category.tokens, Provenance::selfReported);
        } else if (left >= 1) {
            add(category.name + beyondLocalEstimateSuffix, left, Provenance::selfReported);
        }
    }

    /// Adds the derived row when the rows do not cover the total, and sorts them.
    [[nodiscard]] AttributionOutcome outcome(std::int64_t total, bool categoriesSelfReported) && {
        SaturatingSum uncovered;
        uncovered.add(total);
        for (const SlabAttribution& row : rows_)
            uncovered.subtract(row.tokens);
        const std::int64_t difference = uncovered.value();
        if (difference >= 1) add(remainderLabel, difference, Provenance::remainder);
        std::stable_sort(rows_.begin(), rows_.end(), [](const auto& left, const auto& right) {
            return left.tokens != right.tokens ? left.tokens > right.tokens : left.name < right.name;
        });
        return {std::move(rows_), std::max<std::int64_t>(difference, 0), difference < 0,
                categoriesSelfReported};
    }

private:
    std::vector<SlabAttribution> rows_;
};

} // namespace

AttributionOutcome attribute(std::int64_t total, const std::vector<SelfReportedSlab>& selfReported,
                             const std::vector<LocalCategoryEstimate>& localEstimates) {
    Rows rows;
    if (selfReported.empty()) {
        rows.add(unreportedCategoriesLabel, std::max<std::int64_t>(total, 0), Provenance::claudeReported);
        return std::move(rows).outcome(total, false);
    }
    std::vector<LocalCategoryEstimate> kept;
    std::copy_if(localEstimates.begin(), localEstimates.end(), std::back_inserter(kept),
                 [](const LocalCategoryEstimate& estimate) { return estimate.tokens >= 1; });
    std::vector<Explanation> explanations(kept.begin(), kept.end());
    for (const SelfReportedSlab& category : merged(selfReported))
        rows.addCategory(category, explanations);
    for (LocalCategoryEstimate& estimate : kept) {
        rows.add(std::move(estimate.name), estimate.tokens, Provenance::localEstimate);
    }
    return std::move(rows).outcome(total, true);
}

std::string normalize(std::string_view text) { return Text::lettersAndNumbers(Text::lowercased(text)); }

std::vector<SelfReportedSlab> merged(const std::vector<SelfReportedSlab>& selfReported) {
    std::vector<SelfReportedSlab> categories;
    std::vector<SaturatingSum> sums;
    std::unordered_map<std::string, std::size_t> indexByName;
    for (const SelfReportedSlab& slab : selfReported) {
        const auto [place, isNew] = indexByName.try_emplace(normalize(slab.name), categories.size());
        if (isNew) {
            categories.push_back(slab);
            sums.emplace_back();
        }
        sums[place->second].add(slab.tokens);
    }
    for (std::size_t index = 0; index < categories.size(); ++index) {
        categories[index].tokens = sums[index].value();
    }
    return categories;
}

} // namespace SlabAttributor
} // namespace loadscope
