// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Geometry/NestedTreemap.h"
#include "LoadscopeCore/Report/CategoryMembers.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace loadscope {

/// The treemap "By member": the rows of a report, in them their groups, in those their members. Texts are
/// made when they are asked for: most of many members never are. `report` and `members` must outlive it.
class MemberTreemap {
public:
    static constexpr const char* title = "By member";
    static constexpr const char* detailLine =
        "Servers, tools, files, skills and agents within their categories. Expand to see them by size.";
    static constexpr const char* all = "All categories";
    static constexpr const char* wayName = "Where in the tiles";
    static constexpr const char* zoomCaption =
        "A click on a group, or Return, shows it alone; Backspace goes back.";
    static constexpr const char* caption =
        "Tile sizes use the tokens of each row, divided by what Claude Code lists below it.";

    MemberTreemap(const ScanReport& report, const CategoryMembers& members);

    /// What is laid out: rows at depth 0. Nothing without tokens is among it.
    [[nodiscard]] const std::vector<NestedTreemap::Node>& nodes() const { return nodes_; }

    /// The row of the report in which a node lies: its colour.
    [[nodiscard]] std::size_t rowOf(std::size_t node) const { return places_.at(node).row; }

    /// The line of the breakdown's table that shows the same: categories with all that they open to, in
    /// order.
    [[nodiscard]] std::size_t lineOf(std::size_t node) const { return places_.at(node).line; }
    [[nodiscard]] std::optional<std::size_t> nodeOfLine(std::size_t line) const;

    /// The way from all categories to a node; to all of them without one.
    [[nodiscard]] std::vector<std::string> steps(std::optional<std::size_t> node) const;

    [[nodiscard]] std::string name(std::size_t node) const;

    /// The name as far as a tile has room for it: of a file its own name and its folder's.
    [[nodiscard]] std::string label(std::size_t node) const;

    /// The file that a node is; empty for a node that is none.
    [[nodiscard]] std::string path(std::size_t node) const;

    /// The tokens, as far as they are known: "6,000".
    [[nodiscard]] std::string tokens(std::size_t node) const;

    /// The second line of its tip: "6,000 tokens · 15.7% of total".
    [[nodiscard]] std::string detail(std::size_t node) const;

    /// The whole node for assistive technologies.
    [[nodiscard]] std::string spoken(std::size_t node) const;

private:
    struct Place {
        std::size_t row = 0;
        std::size_t line = 0;
        std::optional<std::size_t> group{};
        std::optional<std::size_t> member{};
        bool isDifference = false;
        bool isNotItemised = false;
    };

    void add(std::size_t depth, std::int64_t tokens, const Place& place);
    /// Counts the lines on, also those of what has no node.
    void addList(std::size_t row, std::size_t& line);
    [[nodiscard]] static std::size_t lineCount(const MemberList& list);
    [[nodiscard]] PreciseCount countOf(const Place& place) const;

    const ScanReport& report_;
    const CategoryMembers& members_;
    std::vector<NestedTreemap::Node> nodes_;
    std::vector<Place> places_;
};

} // namespace loadscope
