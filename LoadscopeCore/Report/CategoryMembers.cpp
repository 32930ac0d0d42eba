// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/CategoryMembers.h"

#include "LoadscopeCore/ClaudeProbe/CountSum.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace loadscope {
namespace {

bool comesFirst(std::int64_t tokens, const std::string& name, std::int64_t otherTokens,
                const std::string& otherName) {
    return tokens != otherTokens ? tokens > otherTokens : name < otherName;
}

CategoryMember memberOf(const ContextMember& listed, MemberOrigin origin) {
    return {listed.name, listed.tokens, listed.precision, origin};
}

/// Puts members into groups and both into order.
class Grouping {
public:
    void add(const std::string& group, CategoryMember member) {
        const auto [place, isNew] = places_.try_emplace(group, groups_.size());
        if (isNew) {
            groups_.push_back({group});
            sums_.emplace_back();
        }
        sums_[place->second].add(member.count());
        groups_[place->second].members.push_back(std::move(member));
    }

    [[nodiscard]] std::vector<MemberGroup> groups() && {
        const auto inOrder = [](const auto& left, const auto& right) {
            return comesFirst(left.tokens, left.name, right.tokens, right.name);
        };
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            const PreciseCount sum = sums_[i].value();
            groups_[i].tokens = sum.tokens;
            groups_[i].precision = sum.precision;
            std::ranges::stable_sort(groups_[i].members, inOrder);
        }
        std::ranges::stable_sort(groups_, inOrder);
        return std::move(groups_);
    }

private:
    std::unordered_map<std::string, std::size_t> places_;
    std::vector<MemberGroup> groups_;
    std::vector<CountSum> sums_;
};

/// The members of the tables of one name.
struct Table {
    std::string heading;
    std::string normalizedName;
    std::vector<const ContextMember*> members;
    bool isPlaced = false;

    [[nodiscard]] MemberList list(MemberOrigin origin = MemberOrigin::listed) const {
        Grouping grouping;
        for (const ContextMember* member : members)
            grouping.add(member->group, memberOf(*member, origin));
        return {heading, std::move(grouping).groups()};
    }

    [[nodiscard]] PreciseCount sum() const {
        CountSum sum;
        for (const ContextMember* member : members)
            sum.add({member->tokens, member->precision});
        return sum.value();
    }
};

std::vector<Table> tablesOf(const ContextDetails& details) {
    std::vector<Table> tables;
    std::unordered_map<std::string_view, std::size_t> byHeading;
    std::unordered_map<std::string, std::size_t> byName;
    for (const ContextMember& member : details.members) {
        auto heading = byHeading.find(member.table);
        if (heading == byHeading.end()) {
            std::string name = SlabAttributor::normalize(member.table);
            const auto [place, isNew] = byName.try_emplace(name, tables.size());
            if (isNew) tables.push_back({member.table, std::move(name), {}});
            heading = byHeading.emplace(member.table, place->second).first;
        }
        tables[heading->second].members.push_back(&member);
    }
    return tables;
}

/// What members leave of their category. Neither number is finer than it was printed.
std::optional<PreciseCount> leftOver(std::int64_t category, const PreciseCount& explained) {
    SaturatingSum left;
    left.add(category);
    left.subtract(explained.tokens);
    if (left.value() < 1) return std::nullopt;
    const bool isExact = category < 1000 && explained.precision == CountPrecision::exact;
    return PreciseCount{left.value(), isExact ? CountPrecision::exact : CountPrecision::about};
}

/// Opens the rows of one report.
class Opening {
public:
    explicit Opening(const ScanReport& report) : report_(report), tables_(tablesOf(report.details)) {
        for (const SelfReportedSlab& category : report.categories)
            categories_.emplace(SlabAttributor::normalize(category.name), category.tokens);
        for (const SelfReportedSlab& category : report.details.deferred)
            deferred_.insert(SlabAttributor::normalize(category.name));
    }

    MemberList open(const SlabAttribution& row) {
        if (row.provenance == Provenance::localEstimate) return files(row.name);
        if (row.provenance != Provenance::selfReported) return {};
        std::string name = SlabAttributor::normalize(row.name);
        if (categories_.contains(name)) return whole(name);
        const std::string_view suffix = SlabAttributor::beyondLocalEstimateSuffix;
        if (!row.name.ends_with(suffix)) return {};
        name =
            SlabAttributor::normalize(std::string_view(row.name).substr(0, row.name.size() - suffix.size()));
        return beyondEstimate(name, row.tokens);
    }

    MemberList openOnDemand(const SelfReportedSlab& category) {
        const std::string name = SlabAttributor::normalize(category.name);
        Table* const table = tableOf(name);
        if (table == nullptr || table->isPlaced || categories_.contains(name)) return {};
        table->isPlaced = true;
        MemberList list = table->list();
        list.notItemised = leftOver(category.tokens, table->sum());
        list.isInTotal = false;
        return list;
    }

    [[nodiscard]] std::vector<MemberList> rest() const {
        std::vector<MemberList> lists;
        for (const Table& table : tables_) {
            // What local estimates explain as a whole has no row, but a category.
            const bool hasCategory =
                !table.normalizedName.empty() && categories_.contains(table.normalizedName);
            if (table.isPlaced || hasCategory) continue;
            lists.push_back(table.list());
            lists.back().isInTotal = false;
        }
        return lists;
    }

private:
    Table* tableOf(const std::string& name) {
        const auto table = std::ranges::find(tables_, name, &Table::normalizedName);
        return name.empty() || table == tables_.end() ? nullptr : &*table;
    }

    /// The found files of the tier that a row of local estimates stands for.
    [[nodiscard]] MemberList files(const std::string& row) const {
        for (const InstructionFileTier tier : allInstructionFileTiers) {
            if (InstructionFileSet::categoryName(tier) != row) continue;
            Grouping grouping;
            for (const InstructionFileEstimate& file : report_.fileSet.files(tier)) {
                const auto reported = report_.reportedTokens(file);
                const bool isMissing = !reported && !report_.details.members.empty();
                grouping.add({}, {file.path, file.estimatedTokens, CountPrecision::about,
                                  isMissing ? MemberOrigin::foundNotListed : MemberOrigin::found, reported});
            }
            return {{}, std::move(grouping).groups()};
        }
        return {};
    }

    MemberList whole(const std::string& name) {
        Table* const table = tableOf(name);
        if (table == nullptr) return {};
        table->isPlaced = true;
        MemberList list = table->list();
        list.notItemised = leftOver(categories_.at(name), table->sum());
        list.mayHoldOnDemand = deferred_.contains(name);
        return list;
    }

    /// A row that holds what local estimates of files leave of a category: the files that were not found, the
    /// difference between counts and estimates of those that were, and what nobody itemises.
    MemberList beyondEstimate(const std::string& name, std::int64_t row) {
        Table* const table = tableOf(name);
        const auto category = categories_.find(name);
        const bool isOfFiles = name == SlabAttributor::normalize(ContextDetailsParser::memoryFilesTable);
        if (table == nullptr || category == categories_.end() || !isOfFiles) return {};
        table->isPlaced = true;
        Grouping grouping;
        for (const ContextMember& member : report_.memoryFiles.loadedElsewhere)
            grouping.add(member.group, memberOf(member, MemberOrigin::loadedElsewhere));
        MemberList list{table->heading, std::move(grouping).groups()};
        list.notItemised = leftOver(category->second, table->sum());
        list.estimateDifference = differenceOfEstimates(category->second, row);
        return list;
    }

    /// Nothing unless the estimates were all taken off this one category: else no line could say of what they
    /// are the difference.
    [[nodiscard]] std::optional<PreciseCount> differenceOfEstimates(std::int64_t category,
                                                                    std::int64_t row) const {
        SaturatingSum estimated;
        for (const LocalCategoryEstimate& estimate : report_.fileSet.localCategories())
            estimated.add(estimate.tokens);
        SaturatingSum taken;
        taken.add(category);
        taken.subtract(row);
        if (taken.value() != estimated.value()) return std::nullopt;
        CountSum reported;
        for (const auto& [path, count] : report_.memoryFiles.reported)
            reported.add(count);
        SaturatingSum difference;
        difference.add(reported.value().tokens);
        difference.subtract(estimated.value());
        if (difference.value() == 0) return std::nullopt;
        const bool isExact = reported.value().precision == CountPrecision::exact;
        return PreciseCount{difference.value(), isExact ? CountPrecision::exact : CountPrecision::about};
    }

    const ScanReport& report_;
    std::vector<Table> tables_;
    std::unordered_map<std::string, std::int64_t> categories_; ///< the tool's own numbers by normalised name
    std::set<std::string> deferred_;
};

} // namespace

std::size_t MemberList::memberCount() const {
    std::size_t count = 0;
    for (const MemberGroup& group : groups)
        count += group.members.size();
    return count;
}

PreciseCount MemberList::sum() const {
    CountSum sum;
    for (const MemberGroup& group : groups)
        sum.add(group.count());
    return sum.value();
}

CategoryMembers::CategoryMembers(const ScanReport& report) {
    Opening opening(report);
    for (const SlabAttribution& row : report.rows)
        rows_.push_back(opening.open(row));
    for (const SelfReportedSlab& category : report.details.deferred)
        onDemand_.push_back({category.name, category.tokens, opening.openOnDemand(category)});
    withoutCategory_ = opening.rest();
}

} // namespace loadscope
