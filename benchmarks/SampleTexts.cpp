// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "benchmarks/SampleTexts.h"

#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include <chrono>
#include <cmath>
#include <random>

namespace loadscope::Samples {

std::string contextReport(std::size_t categories) {
    std::string text =
        "## Context Usage\n\n**Model:** claude-sonnet\n**Tokens:** 45k / 200k (23%)\n\n"
        "### Estimated usage by category\n\n| Category | Tokens | Percentage |\n|----|----|----|\n";
    for (std::size_t i = 0; i < categories; ++i) {
        text += "| Category " + std::to_string(i) + " | 1." + std::to_string(i % 10) + "k | 0.7% |\n";
    }
    return text + "\n### Memory Files\n\n| Type | Path | Tokens |\n|----|----|----|\n| Project | CLAUDE.md | "
                  "1.2k |\n";
}

std::string contextDetails(std::size_t bytes) {
    std::string text = contextReport(20) + "\n### MCP Tools\n\n| Tool | Server | Tokens |\n|---|---|---|\n";
    for (std::size_t i = 0; text.size() < bytes; ++i) {
        const std::string server = "server-" + std::to_string(i / 250);
        text += "| mcp__" + server + "__tool_" + std::to_string(i) + " | " + server + " | " +
                std::to_string(i % 900) + " |\n";
    }
    return text;
}

std::string resultObject(const std::string& report) {
    std::string escaped;
    for (const char c : report) {
        escaped += c == '\n' ? "\\n" : std::string(1, c);
    }
    return R"({"type":"result","subtype":"success","is_error":false,"num_turns":1,"result":")" + escaped +
           R"(","session_id":"0b6f7a52-7f0e-4c3e-9a53-5d1c1d3b8a10","usage":{"input_tokens":0,"output_tokens":0}})";
}

std::string transcript(std::size_t bytes) {
    const std::string line =
        R"({"type":"user","message":{"role":"user","content":")" + std::string(400, 'x') + "\"}}\n";
    std::string text;
    while (text.size() < bytes) {
        text += line;
    }
    return text +
           R"({"type":"assistant","message":{"usage":{"input_tokens":3,"cache_creation_input_tokens":40000,)"
           R"("cache_read_input_tokens":1200,"output_tokens":9}}})"
           "\n";
}

std::string eventStream(std::size_t bytes) {
    const std::string line =
        R"({"type":"item.completed","item":{"id":"item_1","type":"agent_message","text":")" +
        std::string(900, 'y') + "\"}}\n";
    std::string text;
    text.reserve(bytes + 2 * line.size());
    while (text.size() < bytes) {
        text += line;
    }
    return text +
           R"({"type":"turn.completed","usage":{"input_tokens":41200,"cached_input_tokens":1024,"output_tokens":5}})"
           "\n";
}

std::vector<RecordedScan> history(std::size_t records, std::size_t categories) {
    std::vector<RecordedScan> scans;
    for (std::size_t i = 0; i < records; ++i) {
        const std::string name = "repository-" + std::to_string(i % 8);
        RecordedScan scan{UUID::generate(),
                          name,
                          "/home/someone/src/" + name,
                          Timestamp(std::chrono::hours(490'000 + i * 5)),
                          static_cast<std::int64_t>(20'000 + i * 271 % 60'000),
                          {},
                          RecordedScan::claudeTool,
                          {}};
        scan.tool = i % 3 == 2 ? RecordedScan::codexTool : RecordedScan::claudeTool;
        for (std::size_t c = 0; scan.tool == RecordedScan::claudeTool && c < categories; ++c) {
            scan.categories.push_back(
                {"Category " + std::to_string(c), static_cast<std::int64_t>(100 * c + i)});
        }
        scans.push_back(scan);
    }
    return scans;
}

std::string scanReport(std::size_t members, std::int64_t growth) {
    ScanReport report;
    report.repositoryName = "app";
    report.repositoryPath = "/home/someone/src/app";
    report.id = UUID::derived(std::to_string(growth));
    report.date = Timestamp(std::chrono::hours(490'000));
    for (std::size_t i = 0; i < members; ++i) {
        const auto tokens = static_cast<std::int64_t>(100 + i % 900) + growth;
        ContextMember member;
        member.table = "MCP Tools";
        member.group = "server-" + std::to_string(i % 40);
        member.name = "mcp__server-" + std::to_string(i % 40) + "__tool-" + std::to_string(i);
        member.tokens = tokens;
        report.details.members.push_back(member);
        report.total += tokens;
    }
    report.rows.push_back({"MCP tools", report.total, Provenance::claudeReported, 0});
    return ScanReportJson::report(report);
}

std::vector<double> weights(std::size_t count) {
    std::mt19937_64 random(42);
    std::uniform_real_distribution<double> exponent(0, 6);
    std::vector<double> weights(count);
    for (double& weight : weights) {
        weight = std::ceil(std::pow(10.0, exponent(random)));
    }
    return weights;
}

} // namespace loadscope::Samples
