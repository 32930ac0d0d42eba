// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/RowArrangement.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

const TableColumns columns{"Name", {"Tokens", "Share"}, "Source"};

TableRow row(const char* name, std::int64_t tokens, int level, const char* source = "tool") {
    return {{}, name, {}, {QString::number(tokens), "1%", source}, level, {tokens}};
}

/// Two servers with tools between two rows that open to nothing.
std::vector<TableRow> rows() {
    return {row("beta", 7, 0),     row("MCP tools", 1'000, 0), row("github", 300, 1),
            row("search", 90, 2),  row("create", 210, 2),      row("files", 700, 1),
            row("search", 700, 2), row("Alpha", 7, 0, "file"), row("zeta", 12'000, 0)};
}

struct Arranged {
    std::vector<TableRow> given = rows();
    RowOutline outline{given};
    RowArrangement arrangement{columns, given, outline};

    [[nodiscard]] QString text() const {
        QStringList names;
        for (const std::size_t shown : arrangement.shown())
            names.append(QString(given[shown].level, QLatin1Char('.')) + given[shown].name);
        return names.join(QLatin1Char(' '));
    }
};

TEST(RowArrangement, SortsWhatStandsBelowTheSameRow) {
    const struct {
        std::optional<TableSort> sort;
        const char* shown;
    } cases[] = {
        {std::nullopt, "beta MCP tools .github ..search ..create .files Alpha zeta"},
        {TableSort{0, false}, "Alpha beta MCP tools .files .github ..create ..search zeta"},
        {TableSort{0, true}, "zeta MCP tools .github ..search ..create .files beta Alpha"},
        {TableSort{1, true}, "zeta MCP tools .files .github ..create ..search beta Alpha"},
        {TableSort{2, false},
         "beta Alpha MCP tools .github ..search ..create .files zeta"}, // by the one value
        {TableSort{3, false}, "Alpha beta MCP tools .github ..search ..create .files zeta"},
    };
    for (const auto& entry : cases) {
        Arranged table;
        table.outline.setOpen(1, true);
        table.outline.setOpen(2, true);
        table.arrangement.setSort(entry.sort);
        EXPECT_EQ(table.text(), entry.shown);
    }
    std::optional<TableSort> sort;
    QStringList turns;
    for (const std::size_t column : {1U, 1U, 1U, 0U, 0U, 1U}) {
        Arranged table;
        table.arrangement.setSort(sort);
        sort = table.arrangement.nextSort(column);
        turns.append(sort ? QString::number(sort->column) + (sort->isDescending ? "down" : "up") : "given");
    }
    EXPECT_EQ(turns.join(' '), "1down 1up given 0up 0down 1down");
}

TEST(RowArrangement, FindsRowsWithWhatTheyStandBelow) {
    const struct {
        const char* wanted;
        const char* shown;
        std::size_t found;
    } cases[] = {
        {"", "beta MCP tools Alpha zeta", 9},
        {"SEARCH", "MCP tools .github ..search .files ..search", 2},
        {"git", "MCP tools .github", 1}, // its own tools are there to be opened
        {"eta", "beta zeta", 2},
        {"nothing", "", 0},
    };
    for (const auto& entry : cases) {
        Arranged table;
        table.arrangement.find(entry.wanted);
        EXPECT_EQ(table.text(), entry.shown) << entry.wanted;
        EXPECT_EQ(table.arrangement.matchCount(), entry.found) << entry.wanted;
    }
    Arranged table;
    table.arrangement.find("git");
    EXPECT_TRUE(table.arrangement.isOpen(1));
    table.outline.setOpen(2, true);
    EXPECT_EQ(table.text(), "MCP tools .github ..search ..create");
    table.arrangement.find({});
    EXPECT_FALSE(table.arrangement.isOpen(1)) << "it was only open to show what was found";
    table.arrangement.setSort(TableSort{1, false});
    table.arrangement.find("e");
    EXPECT_EQ(table.text(), "beta MCP tools .github ..search ..create .files ..search zeta");
}

} // namespace
} // namespace loadscope::testing
