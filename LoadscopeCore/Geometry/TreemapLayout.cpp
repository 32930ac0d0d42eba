// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/TreemapLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace loadscope::TreemapLayout {
namespace {

constexpr double largestFinite = std::numeric_limits<double>::max();

struct Row {
    std::size_t begin = 0; ///< positions in the sorted items
    std::size_t end = 0;
    double sum = 0;
    double minimum = largestFinite;
    double maximum = 0;

    [[nodiscard]] Row with(double area) const {
        return {begin, end + 1, sum + area, std::min(minimum, area), std::max(maximum, area)};
    }

    [[nodiscard]] double worstRatio(double side) const {
        if (!(sum > 0 && side > 0 && minimum > 0)) return largestFinite;
        const double sumSquared = sum * sum;
        const double sideSquared = side * side;
        return std::max(sideSquared * maximum / sumSquared, sumSquared / (sideSquared * minimum));
    }
};

/// The part of the square that no row has taken yet, and the rectangles laid out so far.
class Canvas {
public:
    Canvas(std::span<const Item> items, std::vector<TreemapRect>& rects) : items_(items), rects_(rects) {}

    [[nodiscard]] double shorterSide() const { return std::min(free_.width, free_.height); }

    void place(const Row& row) {
        if (isTall()) {
            const double thickness =
                free_.width > 0 ? std::min(row.sum / free_.width, free_.height) : free_.height;
            acrossTheTop(row, thickness);
            free_.y += thickness;
            free_.height = std::max(0.0, free_.height - thickness);
        } else {
            const double thickness =
                free_.height > 0 ? std::min(row.sum / free_.height, free_.width) : free_.width;
            downTheLeft(row, thickness);
            free_.x += thickness;
            free_.width = std::max(0.0, free_.width - thickness);
        }
    }

    /// The last row takes all that is left, so that rounding leaves no sliver.
    void placeLast(const Row& row) {
        if (isTall()) {
            acrossTheTop(row, free_.height);
        } else {
            downTheLeft(row, free_.width);
        }
    }

private:
    [[nodiscard]] bool isTall() const { return free_.height > free_.width; }

    void acrossTheTop(const Row& row, double thickness) {
        const double right = free_.x + free_.width;
        double x = free_.x;
        for (std::size_t i = row.begin; i < row.end; ++i) {
            const double rest = right - x;
            const double width = i + 1 == row.end ? rest : std::min(rest, items_[i].area / thickness);
            rect(i) = {x, free_.y, std::max(0.0, width), thickness};
            x += width;
        }
    }

    void downTheLeft(const Row& row, double thickness) {
        const double bottom = free_.y + free_.height;
        double y = free_.y;
        for (std::size_t i = row.begin; i < row.end; ++i) {
            const double rest = bottom - y;
            const double height = i + 1 == row.end ? rest : std::min(rest, items_[i].area / thickness);
            rect(i) = {free_.x, y, thickness, std::max(0.0, height)};
            y += height;
        }
    }

    TreemapRect& rect(std::size_t position) {
        return rects_[static_cast<std::size_t>(items_[position].index)];
    }

    std::span<const Item> items_;
    std::vector<TreemapRect>& rects_;
    TreemapRect free_{0, 0, 1, 1};
};

} // namespace

std::vector<Item> items(std::span<const double> weights) {
    std::vector<Item> items;
    items.reserve(weights.size());
    double total = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (!(weights[i] > 0 && std::isfinite(weights[i]))) continue;
        items.push_back({static_cast<std::int64_t>(i), weights[i]});
        total += weights[i];
    }
    if (!std::isfinite(total)) {
        total = 0;
        for (Item& item : items) {
            item.area /= 2 * static_cast<double>(items.size());
            total += item.area;
        }
    }
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
        return a.area != b.area ? a.area > b.area : a.index < b.index;
    });
    for (Item& item : items) {
        item.area /= total;
    }
    return items;
}

std::vector<TreemapRect> layout(std::span<const double> weights) {
    std::vector<TreemapRect> rects(weights.size());
    const std::vector<Item> sorted = items(weights);
    Canvas canvas(sorted, rects);
    Row row;
    for (std::size_t i = 0; i < sorted.size();) {
        const double side = canvas.shorterSide();
        const Row longer = row.with(sorted[i].area);
        if (row.begin == row.end || longer.worstRatio(side) <= row.worstRatio(side)) {
            row = longer;
            ++i;
            continue;
        }
        canvas.place(row);
        row = Row{i, i};
    }
    if (row.sum > 0) canvas.placeLast(row);
    return rects;
}

} // namespace loadscope::TreemapLayout
