// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/LabelRow.h"

#include <algorithm>
#include <cstddef>

namespace loadscope {
namespace {

/// Positions of the labels that fit into `room` together.
std::vector<std::size_t> labelsWithRoom(std::span<const RowLabel> labels, double room, double gap) {
    std::vector<std::size_t> kept(labels.size());
    double needed = -gap;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        kept[i] = i;
        needed += labels[i].width + gap;
    }
    while (!kept.empty() && needed > room) {
        auto lowest = std::min_element(kept.rbegin(), kept.rend(), [&](std::size_t a, std::size_t b) {
            return labels[a].priority < labels[b].priority;
        });
        needed -= labels[*lowest].width + gap;
        kept.erase(std::next(lowest).base());
    }
    return kept;
}

} // namespace

std::vector<std::optional<double>> placeLabelsInRow(std::span<const RowLabel> labels, double left,
                                                    double right, double gap) {
    std::vector<std::optional<double>> edges(labels.size());
    const std::vector<std::size_t> kept = labelsWithRoom(labels, right - left, gap);
    double free = left;
    for (const std::size_t i : kept) {
        edges[i] = std::max(free, labels[i].center - labels[i].width / 2);
        free = *edges[i] + labels[i].width + gap;
    }
    double limit = right;
    for (auto i = kept.rbegin(); i != kept.rend(); ++i) {
        edges[*i] = std::min(*edges[*i], limit - labels[*i].width);
        limit = *edges[*i] - gap;
    }
    return edges;
}

} // namespace loadscope
