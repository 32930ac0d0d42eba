// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Comparison/ScanComparison.h"

#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"
#include "LoadscopeCore/Presentation/ScanReportReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace loadscope {
namespace {

using Warning = ScanComparison::Warning;
using Category = ScanMeasurement::Category;

ScanMeasurement measured(std::int64_t total, std::vector<Category> categories = {}) {
    ScanMeasurement measurement;
    measurement.total = total;
    measurement.totalSource = TotalSource::contextCommand;
    measurement.categories = std::move(categories);
    return measurement;
}

/// The changes as one line each: the name, the numbers, and "~" where rounding explains the change.
std::vector<std::string> told(const ScanComparison& comparison) {
    std::vector<std::string> lines;
    for (const CategoryChange& category : comparison.categories)
        lines.push_back(category.name + ' ' + std::to_string(category.tokens.change()) +
                        (category.tokens.withinRounding ? "~" : ""));
    return lines;
}

TEST(ScanComparison, TellsRoundingFromGrowth) {
    const auto self = Provenance::selfReported;
    const auto local = Provenance::localEstimate;
    const struct {
        std::vector<Category> before, after;
        std::vector<std::string> changes;
    } cases[] = {
        {{{"A", 2'600, self}}, {{"A", 2'700, self}}, {"A 100~"}},
        {{{"A", 2'600, self}}, {{"A", 2'800, self}}, {"A 200"}},
        {{{"A", 2'600, self}}, {{"A", 2'650, self}}, {"A 50~"}}, // only one side was rounded
        {{{"A", 2'600, self}}, {{"A", 2'651, self}}, {"A 51"}},
        {{{"A", 800, self}}, {{"A", 900, self}}, {"A 100"}}, // counts below 1,000 are exact
        {{{"A", 950, self}}, {{"A", 1'000, self}}, {"A 50~"}},
        {{{"A", 1'200'000, self}}, {{"A", 1'300'000, self}}, {"A 100000~"}},
        {{{"A", 2'600, local}}, {{"A", 2'700, local}}, {"A 100"}}, // the size of a file is no rounded number
        {{{"Personal instructions", 2'600}},
         {{"Personal instructions", 2'700}},
         {"Personal instructions 100"}},
        // What a file's estimate leaves of a rounded number is as uncertain as that number.
        {{{"Memory (beyond local estimate)", 1'980, self}, {"Repository instructions", 620, local}},
         {{"Memory (beyond local estimate)", 2'080, self}, {"Repository instructions", 620, local}},
         {"Memory (beyond local estimate) 100~", "Repository instructions 0"}},
        {{{"A", 2'600, self}, {"Unattributed", 17, Provenance::remainder}},
         {{"A", 2'600, self}, {"Unattributed", 117, Provenance::remainder}},
         {"Unattributed 100~", "A 0"}},
        // Largest first, names where equal, the second of a name with the second.
        {{{"B", 1, self}, {"A", 1, self}, {"C", 500, self}, {"B", 5, self}},
         {{"B", 2, self}, {"D", 501, self}, {"A", 2, self}, {"B", 9, self}},
         {"D 501", "C -500", "B 4", "A 1", "B 1"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(told(ScanComparison::of(measured(10, c.before), measured(10, c.after))), c.changes);
    const auto total = [](std::int64_t before, std::int64_t after, TotalSource source) {
        ScanMeasurement now = measured(after);
        now.totalSource = source;
        return ScanComparison::of(measured(before), now).total.withinRounding;
    };
    EXPECT_TRUE(total(25'200, 25'300, TotalSource::contextCommand));
    EXPECT_FALSE(total(25'200, 25'300, TotalSource::transcript)); // exact there
}

TEST(ScanComparison, WarnsWhereTheTwoAreNotAlike) {
    ScanMeasurement full = measured(1);
    full.repositoryPath = "/a";
    full.model = "m";
    full.toolVersion = "1";
    full.contextWindow = 200'000;
    const struct {
        void (*change)(ScanMeasurement&);
        std::vector<Warning> warnings;
        bool isComparable;
    } cases[] = {
        {[](auto&) {}, {}, true},
        {[](auto& m) { m.model = m.toolVersion = {}, m.contextWindow = {}, m.totalSource = {}; }, {}, true},
        {[](auto& m) { m.tool = RecordedScan::codexTool, m.toolVersion = "0.1", m.model = "g"; },
         {Warning::otherTool},
         false},
        {[](auto& m) { m.repositoryPath = "/b"; }, {Warning::otherRepository}, true},
        {[](auto& m) { m.model = "n"; }, {Warning::otherModel}, false},
        {[](auto& m) { m.contextWindow = 1; }, {Warning::otherWindow}, true},
        {[](auto& m) { m.toolVersion = "2"; }, {Warning::otherVersion}, true},
        {[](auto& m) { m.totalSource = TotalSource::cliUsage; }, {Warning::otherSource}, false},
        {[](auto& m) { m.isEstimate = true; }, {Warning::estimate}, false},
    };
    for (const auto& c : cases) {
        ScanMeasurement other = full;
        c.change(other);
        const auto comparison = ScanComparison::of(full, other);
        EXPECT_EQ(comparison.warnings, c.warnings);
        EXPECT_EQ(comparison.isComparable(), c.isComparable);
        EXPECT_EQ(ScanComparison::of(other, full).warnings, c.warnings);
        EXPECT_EQ(DiffPresentation::warnings(comparison).size(), c.warnings.size());
    }
}

/// Plain and slow: searches for each entry's partner.
std::vector<MemberChange> plainChanges(const std::vector<ContextMember>& before,
                                       const std::vector<ContextMember>& after) {
    const auto same = [](const ContextMember& a, const ContextMember& b) {
        return a.table == b.table && a.group == b.group && a.name == b.name;
    };
    std::vector<MemberChange> changes;
    std::vector<bool> used(after.size());
    for (const ContextMember& old : before) {
        MemberChange change{old.table, old.group, old.name, {old.tokens, {}, false}};
        for (std::size_t i = 0; i < after.size() && !change.tokens.after; ++i) {
            if (used[i] || !same(old, after[i])) continue;
            used[i] = true;
            change.tokens.after = after[i].tokens;
        }
        changes.push_back(change);
    }
    for (std::size_t i = 0; i < after.size(); ++i)
        if (!used[i])
            changes.push_back({after[i].table, after[i].group, after[i].name, {{}, after[i].tokens, false}});
    return changes;
}

TEST(ScanComparison, EqualsAPlainImplementationOnRandomPairs) {
    std::mt19937 random(20261123);
    const auto upTo = [&](int most) { return std::uniform_int_distribution(0, most)(random); };
    const auto members = [&] {
        std::vector<ContextMember> list(static_cast<std::size_t>(upTo(12)));
        for (ContextMember& member : list)
            member = {upTo(1) == 0 ? "MCP Tools" : "Skills", std::string(1, static_cast<char>('a' + upTo(2))),
                      std::string(1, static_cast<char>('x' + upTo(2))), upTo(300), CountPrecision::exact};
        return list;
    };
    const auto key = [](const MemberChange& change) {
        return std::tuple(-std::abs(change.tokens.change()), change.name, change.group, change.table,
                          change.tokens.before, change.tokens.after);
    };
    for (int pair = 0; pair < 2'000; ++pair) {
        ScanMeasurement before = measured(0);
        ScanMeasurement after = measured(0);
        before.members = members();
        after.members = members();
        auto expected = plainChanges(*before.members, *after.members);
        auto found = *ScanComparison::of(before, after).members;
        EXPECT_TRUE(std::is_sorted(found.begin(), found.end(), [&](const auto& left, const auto& right) {
            return std::abs(left.tokens.change()) > std::abs(right.tokens.change());
        }));
        const auto less = [&](const auto& left, const auto& right) { return key(left) < key(right); };
        std::sort(expected.begin(), expected.end(), less);
        std::sort(found.begin(), found.end(), less);
        ASSERT_EQ(found, expected) << pair;
    }
    EXPECT_FALSE(ScanComparison::of(measured(1), measured(2)).members) << "neither tells";
}

TEST(ScanReportReader, ReadsWhatIsThereAndSaysWhyItCannot) {
    using ScanReportReader::Unreadable;
    const auto reason = [](std::string_view text) {
        const auto result = ScanReportReader::read(text);
        const auto* unreadable = std::get_if<Unreadable>(&result);
        return unreadable == nullptr ? std::string("read") : unreadable->reason;
    };
    EXPECT_EQ(reason(""), "is empty.");
    EXPECT_EQ(reason("[1]"), "is not a JSON object.");
    EXPECT_EQ(reason(R"({"total": 5})"), "read");
    for (const char* total :
         {"{}", R"({"total": -1})", R"({"total": "5"})", R"({"total": 1.5})", R"({"total": 1e30})"})
        EXPECT_EQ(reason(total), "is not a report of `loadscope scan --json`: it has no \"total\".") << total;
    EXPECT_NE(reason(R"({"total": 5, "schemaVersion": 2})").find("newer version"), std::string::npos);
    EXPECT_EQ(reason(R"({"error": {"headline": "No."}})"), "is the report of a scan that failed: No.");
    EXPECT_NE(reason(std::string(16'000'001, ' ')).find("16 MB"), std::string::npos);
    const auto odd = std::get<ScanMeasurement>(ScanReportReader::read(
        R"({"total": 5, "rows": [{"name": "A", "tokens": 3, "provenance": "?"}, {"name": 1}, 7, {"tokens": 2}],
            "details": {"members": [{"name": "m", "tokens": 2, "precision": "below"}, {"name": "n"}]},
            "date": "2026-11-16T20:31:31Z", "totalSource": "cliUsage", "model": null})"));
    EXPECT_EQ(odd.categories, (std::vector<Category>{{"A", 3}}));
    EXPECT_EQ(odd.members, (std::vector<ContextMember>{{"", "", "m", 2, CountPrecision::below}}));
    EXPECT_TRUE(odd.date && odd.totalSource == TotalSource::cliUsage && !odd.model);
}

TEST(Diff, KeepsStrangeNamesFromBreakingMarkdown) {
    for (const std::string name :
         {"a|b", "`x`", "@team", "<b>", "[l](u)", "a\nb", "*s*", "#12", "https://e.x", "\x1b[1m"}) {
        const std::string safe = Markdown::name(name);
        EXPECT_TRUE(safe.starts_with("<code>") && safe.ends_with("</code>"));
        const std::string inside = safe.substr(6, safe.size() - 13);
        EXPECT_EQ(inside.find_first_of("|`@<>[]*\n\x1b:"), std::string::npos) << inside;
    }
    EXPECT_LT(Markdown::name(std::string(5'000, 'x')).size(), 300U);
}

TEST(Diff, TellsInOneLineWhatChangedSince) {
    ScanMeasurement before = measured(25'200, {{"Skills", 300}, {"MCP tools", 4'000}, {"A", 2'600}});
    ScanMeasurement after = measured(30'000, {{"Skills", 600}, {"MCP tools", 8'500}, {"A", 2'700}});
    const auto since = [&] { return DiffPresentation::sinceLine(ScanComparison::of(before, after)); };
    EXPECT_EQ(since(), "+4,800 since the scan before: MCP tools +4,500, Skills +300");
    after.total = 25'300;
    EXPECT_EQ(since(), "+100 since the scan before, within rounding");
    after.total = before.total;
    EXPECT_EQ(since(), "No change since the scan before");
}

} // namespace
} // namespace loadscope
