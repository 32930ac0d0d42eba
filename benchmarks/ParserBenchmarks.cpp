// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextBreakdownParser.h"
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/CodexProbe/CodexProbe.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Presentation/MemberTreemap.h"
#include "benchmarks/SampleTexts.h"

#include <benchmark/benchmark.h>

namespace loadscope {
namespace {

constexpr std::size_t megabyte = 1'000'000;

/// Runs a parser over one text and counts the bytes.
template <class Parse>
void measure(benchmark::State& state, const std::string& text, const Parse& parse) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(parse(text));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
}

void contextReport(benchmark::State& state) {
    measure(state, Samples::contextReport(20'000),
            [](const std::string& text) { return ContextBreakdownParser::parse(text); });
}
BENCHMARK(contextReport)->Unit(benchmark::kMillisecond);

void contextDetails(benchmark::State& state) {
    measure(state, Samples::contextDetails(megabyte),
            [](const std::string& text) { return ContextDetailsParser::parse(text); });
}
BENCHMARK(contextDetails)->Unit(benchmark::kMillisecond);

/// What a report of 20 categories and 5,000 members takes before it can be opened and drawn.
void categoryMembers(benchmark::State& state) {
    const std::string text = Samples::contextDetails(5000 * 46);
    ProbeResult probe;
    probe.details = ContextDetailsParser::parse(text);
    probe.selfReportedSlabs = ContextBreakdownParser::categories(text);
    probe.selfReportedSlabs.push_back({"MCP tools", 2'000'000});
    probe.authoritativeTotal = 3'000'000;
    const ScanReport report = ScanReportBuilder::build(
        RepoSelection("/r"), probe, {}, CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason));
    for (auto _ : state) {
        const CategoryMembers members(report);
        benchmark::DoNotOptimize(MemberTreemap(report, members).nodes().size());
    }
}
BENCHMARK(categoryMembers)->Unit(benchmark::kMillisecond);

void resultObject(benchmark::State& state) {
    measure(state, Samples::resultObject(Samples::contextReport(20'000)),
            [](const std::string& text) { return ProbeOutputParser::parse(text, "", 0); });
}
BENCHMARK(resultObject)->Unit(benchmark::kMillisecond);

void transcript(benchmark::State& state) {
    measure(state, Samples::transcript(megabyte),
            [](const std::string& text) { return TranscriptReader::firstAssistantUsageInTranscript(text); });
}
BENCHMARK(transcript)->Unit(benchmark::kMillisecond);

void eventStream(benchmark::State& state) {
    measure(state, Samples::eventStream(megabyte),
            [](const std::string& text) { return CodexOutputParser::firstTokenCount(text); });
}
BENCHMARK(eventStream)->Unit(benchmark::kMillisecond);

void historyFile(benchmark::State& state) {
    measure(state, ScanHistoryFile::encode(Samples::history(200, 20)),
            [](const std::string& text) { return ScanHistoryFile::decode(text); });
}
BENCHMARK(historyFile)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace loadscope
