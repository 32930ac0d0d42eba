// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Overview/OverviewReport.h"
#include "LoadscopeApp/Pages/Overview/OverviewStart.h"
#include "LoadscopeApp/Pages/Trends/TrendsView.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/PausingStore.h"

#include <QMenu>
#include <QTemporaryDir>

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

TEST(Window, OffersTheFoldersToGoBackTo) {
    const QTemporaryDir kept;
    RecordedScan there = record(2, "kept", day(2), 1'000);
    there.repositoryPath = kept.path().toStdString();
    Window window({.history = {record(1, "web & more", day(1), 30'000), there}});
    window.show();
    const auto row = [&](const char* name) {
        for (auto* button : window.view.findChildren<RowButton*>())
            if (button->isVisible() && button->accessibleName().startsWith(QString::fromUtf8(name)))
                return button;
        return static_cast<RowButton*>(nullptr);
    };
    ASSERT_TRUE(eventually([&] { return row("web & more") && !row("web & more")->isEnabled(); }))
        << "nothing is there any more";
    EXPECT_TRUE(row("web & more")->accessibleName().contains("No longer there"));
    ASSERT_TRUE(row("kept"));
    EXPECT_TRUE(row("kept")->isEnabled());

    const auto* menu = window.button("Recent folders")->findChild<QMenu*>();
    ASSERT_EQ(menu->actions().size(), 2);
    EXPECT_FALSE(menu->actions().at(1)->isEnabled());
    EXPECT_EQ(menu->actions().at(1)->text(), "web && more — no longer there");
    menu->actions().at(0)->trigger();
    ASSERT_TRUE(window.model.selection());
    EXPECT_EQ(window.model.selection()->path, there.repositoryPath);
    window.choose(); // comes first from now on
    EXPECT_EQ(menu->actions().at(0)->data().toByteArray().toStdString(), window.folderPath());
    row("kept")->click();
    EXPECT_EQ(window.model.selection()->path, there.repositoryPath);

    window.tools.probe->answer(FakeProbe::Hang{});
    window.view.startScan();
    EXPECT_FALSE(window.button("Recent folders")->isEnabled());
    window.model.cancel();
    EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));

    window.nextChoice = window.folderPath();
    for (auto* button : window.view.findChildren<OverviewStart*>().front()->findChildren<PushButton*>())
        button->click();
    EXPECT_EQ(window.model.selection()->path, window.folderPath());
}

TEST(Window, RescansEveryRepositoryAndTellsWhatBecomesOfEach) {
    const QTemporaryDir first;
    const QTemporaryDir second;
    std::vector<RecordedScan> history{record(1, "a", day(1), 1'000), record(2, "b", day(2), 1'000),
                                      record(3, "gone", day(3), 1'000)};
    history[0].repositoryPath = first.path().toStdString();
    history[1].repositoryPath = second.path().toStdString();
    Window window({.history = history});
    window.show();
    window.view.setPage(AppPage::compare);
    ASSERT_NE(window.button("Rescan All"), nullptr);
    EXPECT_TRUE(
        window.says("Scans each of the 3 recorded repositories once more in Claude Code, 2 at a time."));
    window.tools.probe->answer(FakeProbe::Hang{});
    window.button("Rescan All")->click();
    ASSERT_TRUE(eventually([&] { return window.says("a, Reading Claude startup context…"); }));
    EXPECT_TRUE(window.says("0 of 3 folders done"));
    window.choose();
    window.view.startScan();
    EXPECT_FALSE(window.model.state().isScanning()) << "one or the other";
    window.view.setPage(AppPage::compare);
    window.button("Cancel b")->click();
    EXPECT_TRUE(eventually([&] { return window.says("b, Stopped"); }));
    EXPECT_TRUE(eventually([&] { return window.says("gone, This folder could not be read."); }));
    window.button("Cancel All")->click();
    ASSERT_TRUE(eventually([&] { return !window.batch.isRunning(); }));
    EXPECT_TRUE(window.says("0 of 3 folders measured, 1 failed, 2 stopped"));

    window.tools.probe->answer(sampleResult());
    window.button("Rescan All")->click();
    EXPECT_TRUE(eventually([&] { return window.says("a, Done") && window.says("b, Done"); }));
    ASSERT_TRUE(eventually([&] { return window.model.history().size() == 5; })) << "recorded by the batch";
    EXPECT_EQ(ScanHistoryStore(window.data.path().toStdString()).load().size(), 5U);
    ASSERT_TRUE(eventually([&] { return !window.batch.isRunning(); }));
    window.batch.start({RepoSelection("/src/other")}, {}, false);
    EXPECT_TRUE(window.says("other")) << "the lines are those of this run";
    ASSERT_TRUE(eventually([&] { return !window.batch.isRunning(); }));
    window.view.openRepository(history[0].repositoryPath);
    EXPECT_EQ(window.view.page(), AppPage::overview) << "its report was kept";

    window.tools.probe->answer(FakeProbe::Hang{});
    window.view.startScan();
    window.view.setPage(AppPage::compare);
    EXPECT_FALSE(window.button("Rescan All")->isEnabled());
    EXPECT_TRUE(window.says("A scan is running"));
    window.model.cancel();
    EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
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

    // Another folder has nothing to show but its trends; going back shows what was measured again.
    const QTemporaryDir other;
    window.view.openRepository(other.path().toStdString());
    EXPECT_EQ(window.view.page(), AppPage::trends);
    window.view.setPage(AppPage::overview);
    EXPECT_TRUE(window.says("Start a context scan"));
    window.view.openRepository(window.folderPath());
    EXPECT_EQ(window.view.page(), AppPage::overview);
    EXPECT_FALSE(window.model.state().report()) << "the model forgets, the window does not";
    ASSERT_TRUE(eventually([&] { return window.view.findChildren<OverviewReport*>().size() == 1; }));
    EXPECT_EQ(window.view.findChild<OverviewReport*>()->report(), report);
    EXPECT_TRUE(eventually([&] {
        return !spoken(window.view).filter(QStringLiteral(". Scan Again measures it anew.")).isEmpty();
    }));

    // A scan that was stopped takes nothing away either.
    window.tools.probe->answer(FakeProbe::Hang{});
    window.view.startScan();
    ASSERT_TRUE(eventually([&] { return window.says("Reading Claude startup context…"); }));
    window.model.cancel();
    ASSERT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
    ASSERT_TRUE(eventually([&] { return window.view.findChildren<OverviewReport*>().size() == 1; }));
    EXPECT_EQ(window.view.findChild<OverviewReport*>()->report(), report);

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
