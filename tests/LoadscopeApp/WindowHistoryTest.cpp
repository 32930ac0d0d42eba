// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/PushButton.h"
#include "LoadscopeApp/Pages/TrendsView.h"
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

} // namespace
} // namespace loadscope::testing
