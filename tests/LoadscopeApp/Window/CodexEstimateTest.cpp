// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

CodexItems items() {
    CodexItems all;
    all.items = {{CodexItemKind::systemPrompt, 20'000}, {CodexItemKind::skills, 4'001}};
    all.instructions.files = {{"/src/AGENTS.md", 34'886, 32'768}};
    return all;
}

void scan(Window& window, std::int64_t total = 45'000) {
    window.tools.probe->answer(sampleResult(total));
    window.show();
    if (!window.model.selection()) window.choose();
    window.model.scan();
    ASSERT_TRUE(
        eventually([&] { return window.model.state().report() && !window.model.isScanTaskRunning(); }));
}

TEST(CodexEstimate, IsAskedForByAButtonAndOpensToItsItems) {
    Window window;
    CodexEstimateModel estimates(window.uiThread, window.tools.codex);
    window.view.setCodexEstimates(estimates);
    window.tools.codex->items = items();
    scan(window);
    auto* ask = window.button(QStringLiteral("Estimate without a session"));
    ASSERT_NE(ask, nullptr);
    EXPECT_TRUE(
        window.says(QStringLiteral("Codex starts the servers of its configuration for this, as a session "
                                   "does. It uses no allowance.")));
    ask->setFocus();
    ask->click();
    ASSERT_TRUE(eventually([&] { return estimates.items().has_value(); }));
    EXPECT_TRUE(window.says(
        QStringLiteral("Codex: about 6,001 tokens — an estimate from sizes, without a session.")));
    EXPECT_EQ(QApplication::focusWidget(), window.button(QStringLiteral("Estimate without a session")));
    for (auto* disclosure : window.view.findChildren<DisclosureButton*>())
        disclosure->setExpanded(true);
    const QStringList said = spoken(window.view);
    EXPECT_TRUE(said.contains(QStringLiteral("~5,000")));
    EXPECT_TRUE(said.contains(QStringLiteral("32,768 of 34,886")));
    EXPECT_TRUE(window.model.history().empty()) << "nothing is recorded";

    window.view.selectFolder("/elsewhere");
    EXPECT_FALSE(estimates.items()) << "it was about another folder";
}

TEST(SinceLine, OpensToWhatChangedSinceTheScanBefore) {
    Window::Options options;
    options.history = {record(1, "other", day(1), 5)};
    Window window(options);
    scan(window);
    EXPECT_EQ(window.model.previousScan(), nullptr) << "of another folder";
    scan(window, 49'800);
    const QStringList lines = spoken(window.view).filter(QStringLiteral("+4,800 since "));
    ASSERT_EQ(lines.size(), 1);
    for (auto* disclosure : window.view.findChildren<DisclosureButton*>())
        if (disclosure->accessibleName() == lines[0]) disclosure->setExpanded(true);
    EXPECT_TRUE(spoken(window.view).contains(QStringLiteral("45,000 → 49,800 tokens (+4,800, +10.7%)")));
}

} // namespace
} // namespace loadscope::testing
