// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/PausingStore.h"

namespace loadscope::testing {
namespace {

TEST(Window, StaysAliveAndSaysSoWhileTheHistoryIsReadOrDeleted) {
    Window window({.history = {record(1, "web", day(1), 30'000)}});
    auto store = std::make_shared<PausingStore>(window.data.path().toStdString());
    store->pauseIn(PausingStore::Operation::load);
    window.tools.history = store;
    ScanModel model(window.uiThread, window.tools.collaborators());
    const LetGo letGo(*store);
    ContentView view(model, window.readiness, window.store, {});
    view.show();
    for (const AppPage page : {AppPage::compare, AppPage::trends}) {
        view.setPage(page);
        EXPECT_TRUE(spoken(view).contains("Reading the recorded scans…"));
        EXPECT_FALSE(spoken(view).contains("No recorded scans yet"));
    }
    store->goOn();
    ASSERT_TRUE(eventually([&] { return spoken(view).contains("Previous runs"); }));
    view.setPage(AppPage::compare);
    EXPECT_TRUE(spoken(view).contains("Leaderboard"));
    view.setPage(AppPage::trends);

    store->pauseIn(PausingStore::Operation::clear);
    auto* trends = view.findChild<TrendsView*>();
    Q_EMIT trends->clearRequested();
    const auto deletingButton = [trends] {
        for (auto* button : trends->findChildren<PushButton*>())
            if (button->text() == "Deleting…") return button;
        return static_cast<PushButton*>(nullptr);
    };
    ASSERT_NE(deletingButton(), nullptr);
    EXPECT_FALSE(deletingButton()->isEnabled());
    model.select(RepoSelection("/src/elsewhere"));
    ASSERT_NE(deletingButton(), nullptr) << "the page was made anew meanwhile";
    store->goOn();
    EXPECT_TRUE(eventually([&] { return spoken(view).contains("No recorded scans yet"); }));
}

TEST(Window, KeepsTheReportWhenARowOfItsOwnRepositoryIsPressed) {
    Window window;
    window.show();
    window.choose();
    window.tools.probe->answer(sampleResult());
    window.view.startScan();
    ASSERT_TRUE(
        eventually([&] { return window.model.state().report() && !window.model.isScanTaskRunning(); }));
    const auto report = window.model.state().report();
    window.view.setPage(AppPage::trends);
    Q_EMIT window.view.findChild<TrendsView*>()->repositoryRequested(window.folderPath());
    EXPECT_EQ(window.view.page(), AppPage::overview);
    EXPECT_EQ(window.model.state().report(), report);

    // Not even a scan under way keeps it from coming forward.
    window.tools.probe->answer(FakeProbe::Hang{});
    window.view.startScan();
    window.view.setPage(AppPage::compare);
    window.view.openRepository(window.folderPath());
    EXPECT_EQ(window.view.page(), AppPage::overview);
    EXPECT_FALSE(window.says("A scan is running"));
    window.model.cancel();
    EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
}

} // namespace
} // namespace loadscope::testing
