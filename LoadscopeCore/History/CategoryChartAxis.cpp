// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistory.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace loadscope {

std::size_t CategoryChartAxis::OccurrenceHash::operator()(const Occurrence& occurrence) const {
    return std::hash<std::string>()(occurrence.label) * 31 + static_cast<std::size_t>(occurrence.ordinal);
}

std::vector<CategoryChartAxis::Occurrence>
CategoryChartAxis::occurrences(const std::vector<RecordedCategory>& categories) {
    std::unordered_map<std::string_view, std::int64_t> counts;
    std::vector<Occurrence> list;
    list.reserve(categories.size());
    for (const RecordedCategory& category : categories)
        list.push_back({category.name, counts[category.name]++});
    return list;
}

CategoryChartAxis CategoryChartAxis::make(const std::vector<RecordedScan>& scans) {
    struct Place {
        Occurrence occurrence;
        SaturatingSum tokens;
    };
    std::vector<Place> places;
    std::unordered_map<Occurrence, std::size_t, OccurrenceHash> indices;
    for (const RecordedScan& scan : scans) {
        const std::vector<Occurrence> list = occurrences(scan.categories);
        for (std::size_t index = 0; index < list.size(); ++index) {
            const auto [found, isNew] = indices.try_emplace(list[index], places.size());
            if (isNew) places.push_back({list[index], {}});
            places[found->second].tokens.add(scan.categories[index].tokens);
        }
    }
    std::stable_sort(places.begin(), places.end(), [](const Place& left, const Place& right) {
        if (left.tokens.value() != right.tokens.value()) return left.tokens.value() > right.tokens.value();
        const int labels = Text::compareCanonically(left.occurrence.label, right.occurrence.label);
        return labels != 0 ? labels < 0 : left.occurrence.ordinal < right.occurrence.ordinal;
    });

    CategoryChartAxis axis;
    axis.entries_.reserve(places.size());
    for (const Place& place : places) {
        std::string coordinate = "category-" + std::to_string(axis.entries_.size());
        axis.entries_.push_back({coordinate, place.occurrence.label});
        axis.coordinatesByOccurrence_.emplace(place.occurrence, std::move(coordinate));
    }
    return axis;
}

std::vector<std::string> CategoryChartAxis::coordinates() const {
    std::vector<std::string> list;
    list.reserve(entries_.size());
    for (const Entry& entry : entries_)
        list.push_back(entry.coordinate);
    return list;
}

std::vector<CategoryChartAxis::Row>
CategoryChartAxis::rows(const std::vector<RecordedCategory>& categories) const {
    const std::vector<Occurrence> list = occurrences(categories);
    std::vector<Row> rows;
    rows.reserve(list.size());
    for (std::size_t index = 0; index < list.size(); ++index) {
        const auto found = coordinatesByOccurrence_.find(list[index]);
        if (found != coordinatesByOccurrence_.end())
            rows.push_back({found->second, categories[index].name, categories[index].tokens});
    }
    return rows;
}

std::optional<std::string> CategoryChartAxis::label(std::string_view coordinate) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.coordinate == coordinate; });
    if (found == entries_.end()) return std::nullopt;
    return found->label;
}

} // namespace loadscope
