// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/Flags.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace loadscope {
namespace {

constexpr double lineGap = 4;  // points between a line and its label
constexpr double labelGap = 8; // points at least between two flags of a row
constexpr double passGap = 3;  // points at least between a label and a line that passes it

/// Flags that have found their places so far.
class Rows {
public:
    Rows(const RectF& area, double lineHeight) : area_(area), lineHeight_(lineHeight) {}

    [[nodiscard]] std::optional<RectF> place(const Flag& flag, double width) {
        for (const double left : {flag.x + lineGap, flag.x - lineGap - width}) {
            const RectF rect{left, area_.y + static_cast<double>(flag.row) * (lineHeight_ + flagRowGap),
                             width, lineHeight_};
            if (!isFree(flag, rect)) continue;
            taken_.push_back({flag.row, flag.x, std::min(flag.x, rect.x), std::max(flag.x, rect.right())});
            return rect;
        }
        return std::nullopt;
    }

private:
    struct Taken {
        std::size_t row;
        double line, left, right;
    };

    [[nodiscard]] bool isFree(const Flag& flag, const RectF& rect) const {
        if (rect.x < area_.x || rect.right() > area_.right() || rect.bottom() > area_.bottom()) return false;
        const double left = std::min(flag.x, rect.x);
        const double right = std::max(flag.x, rect.right());
        return std::none_of(taken_.begin(), taken_.end(), [&](const Taken& other) {
            if (other.row == flag.row) return left < other.right + labelGap && right + labelGap > other.left;
            // The line of a flag in a higher row passes this one.
            return other.row < flag.row && other.line > rect.x - passGap &&
                   other.line < rect.right() + passGap;
        });
    }

    RectF area_;
    double lineHeight_;
    std::vector<Taken> taken_;
};

} // namespace

std::vector<PlacedFlag> placeFlags(std::span<const Flag> flags, const RectF& area, const TextMeasure& text) {
    std::vector<std::size_t> order(flags.size());
    std::iota(order.rbegin(), order.rend(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return flags[a].row < flags[b].row; });
    std::vector<PlacedFlag> placed(flags.size());
    Rows rows(area, text.lineHeight);
    for (const std::size_t i : order) {
        for (const std::string& label : {flags[i].label, flags[i].shortLabel}) {
            if (label.empty()) continue;
            placed[i] = {label, rows.place(flags[i], text.width(label))};
            if (placed[i].rect) break;
        }
    }
    return placed;
}

} // namespace loadscope
