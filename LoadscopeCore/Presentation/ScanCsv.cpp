// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanCsv.h"

#include "LoadscopeCore/Platform/Csv.h"

namespace loadscope {

std::string ScanCsv::report(const ScanReport& report) {
    const auto number = [](std::int64_t tokens) { return std::to_string(tokens); };
    std::string table = Csv::line({"kind", "table", "group", "name", "tokens", "precision", "counted"});
    table += Csv::line({"total", "", "", report.repositoryName, number(report.total),
                        report.conditions.isEstimate ? "estimate" : rawValue(report.totalSource), "yes"});
    for (const SlabAttribution& row : report.rows)
        table +=
            Csv::line({"category", "", "", row.name, number(row.tokens), rawValue(row.provenance), "yes"});
    for (const ContextMember& member : report.details.members)
        table += Csv::line({"member", member.table, member.group, member.name, number(member.tokens),
                            rawValue(member.precision), member.onDemand ? "no" : "yes"});
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const InstructionFileEstimate& file : report.fileSet.files(tier)) {
            const auto reported = report.reportedTokens(file);
            table += Csv::line({"file", rawValue(tier), "", file.path,
                                number(reported ? reported->tokens : file.estimatedTokens),
                                reported ? rawValue(reported->precision) : "estimate", "yes"});
        }
    return table;
}

} // namespace loadscope
