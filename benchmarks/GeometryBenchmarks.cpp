// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Geometry/BarChartGeometry.h"
#include "LoadscopeCore/Geometry/DonutGeometry.h"
#include "LoadscopeCore/Geometry/TreemapTiles.h"
#include "LoadscopeCore/Geometry/TrendChartGeometry.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"
#include "benchmarks/SampleTexts.h"

#include <benchmark/benchmark.h>

namespace loadscope {
namespace {

TextMeasure sixPointText() {
    return {[](std::string_view text) { return 6.0 * static_cast<double>(text.size()); }, 12};
}

/// From the history to the last rectangle, as the page does it when it opens.
void trendsPage(benchmark::State& state) {
    std::vector<RecordedScan> history = Samples::history(200, 20);
    for (RecordedScan& scan : history) {
        scan.repositoryPath = "/home/someone/src/one";
    }
    for (auto _ : state) {
        const TrendsPresentation page(history, std::nullopt, Timestamp{});
        benchmark::DoNotOptimize(page.runs());
        benchmark::DoNotOptimize(TrendChartGeometry(page.chart(), {1000, 260}, sixPointText()));
    }
}
BENCHMARK(trendsPage)->Unit(benchmark::kMillisecond);

void comparePage(benchmark::State& state) {
    std::vector<RecordedScan> history = Samples::history(200, 20);
    for (std::size_t i = 0; i < history.size(); ++i) {
        history[i].repositoryPath += "/" + std::to_string(i % 40);
    }
    for (auto _ : state) {
        const ComparePresentation page(history);
        for (const ComparePresentation::Column& column : page.columns()) {
            benchmark::DoNotOptimize(
                BarChartGeometry(page.columnChart(column), 300, sixPointText(), BarChartStyle::column()));
        }
        benchmark::DoNotOptimize(
            BarChartGeometry(page.combinedChart(), 1000, sixPointText(), BarChartStyle::grouped()));
    }
}
BENCHMARK(comparePage)->Unit(benchmark::kMillisecond);

void hoverOnTrendChart(benchmark::State& state) {
    TrendChartData data;
    for (const RecordedScan& scan : Samples::history(200, 0)) {
        data.series.resize(1);
        data.series[0].push_back({scan.date, scan.total});
    }
    const TrendChartGeometry chart(data, {1000, 260}, sixPointText());
    double x = 0;
    for (auto _ : state) {
        x = x > 1000 ? 0 : x + 1;
        benchmark::DoNotOptimize(chart.markAt(x));
    }
}
BENCHMARK(hoverOnTrendChart)->Unit(benchmark::kMillisecond);

void treemapOf2000Files(benchmark::State& state) {
    const std::vector<double> weights = Samples::weights(2000);
    for (auto _ : state) {
        benchmark::DoNotOptimize(TreemapTiles(weights, {0, 0, 800, 300}, 2));
    }
}
BENCHMARK(treemapOf2000Files)->Unit(benchmark::kMillisecond);

void donutOf500Rows(benchmark::State& state) {
    const std::vector<std::int64_t> tokens(500, 90);
    for (auto _ : state) {
        benchmark::DoNotOptimize(DonutGeometry(tokens, {0, 0, 200, 200}));
    }
}
BENCHMARK(donutOf500Rows)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace loadscope
