// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "benchmarks/SampleTexts.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr std::size_t records = 200;
constexpr std::size_t categories = 20;

/// A store with a full history in a folder of its own.
class FullStore {
public:
    FullStore()
        : folder_(std::filesystem::temp_directory_path() /
                  ("loadscope-benchmark-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
        for (const RecordedScan& scan : Samples::history(records, categories)) {
            store_.append(scan);
        }
    }
    ~FullStore() { std::filesystem::remove_all(folder_); }
    FullStore(const FullStore&) = delete;
    FullStore& operator=(const FullStore&) = delete;

    ScanHistoryStore& operator*() { return store_; }

private:
    std::filesystem::path folder_;
    ScanHistoryStore store_{folder_.string()};
};

void historyLoad(benchmark::State& state) {
    FullStore store;
    for (auto _ : state) {
        benchmark::DoNotOptimize((*store).load());
    }
}
BENCHMARK(historyLoad)->Unit(benchmark::kMillisecond);

void historyAppend(benchmark::State& state) {
    FullStore store;
    const RecordedScan scan = Samples::history(records, categories).back();
    for (auto _ : state) {
        benchmark::DoNotOptimize((*store).append(scan));
    }
}
BENCHMARK(historyAppend)->Unit(benchmark::kMillisecond)->UseRealTime();

void leaderboard(benchmark::State& state) {
    const std::vector<RecordedScan> history = Samples::history(records, categories);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanHistory::leaderboard(history, RecordedScan::claudeTool));
    }
}
BENCHMARK(leaderboard)->Unit(benchmark::kMillisecond);

void categoryAxisAndRows(benchmark::State& state) {
    const std::vector<RecordedScan> history = Samples::history(records, categories);
    for (auto _ : state) {
        const CategoryChartAxis axis = ScanHistory::categoryAxis(history);
        for (const RecordedScan& scan : history) {
            benchmark::DoNotOptimize(axis.rows(scan.categories));
        }
    }
}
BENCHMARK(categoryAxisAndRows)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace loadscope
