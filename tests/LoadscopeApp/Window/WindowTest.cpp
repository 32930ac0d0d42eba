// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/SettingsStore.h"
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Pages/Overview/OverviewView.h"
#include "LoadscopeApp/Window/AppPage.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QSplitter>
#include <QTest>
#include <QUrl>

#include <vector>

namespace loadscope::testing {
namespace {

TEST(Window, NamesAndEnablesItsCommandsByTheStateOfTheModels) {
    using enum ToolReadiness;
    struct Case {
        const char* name;
        ReadinessChecker::Result readiness;
        bool selection;
        bool includeCodex;
        QString scanTitle;
        bool scanEnabled;
    };
    const std::vector<Case> cases{
        {"nothing chosen", {ready, ready}, false, false, "Scan", false},
        {"chosen", {ready, ready}, true, false, "Scan Again", true},
        {"signed out", {signedOut, ready}, true, false, "Scan Again", false},
        {"Codex missing and not wanted", {ready, notInstalled}, true, false, "Scan Again", true},
        {"Codex missing but wanted", {ready, notInstalled}, true, true, "Scan Again", false},
        {"not verified", {unknown, unknown}, true, true, "Scan Again", true},
    };
    for (const Case& testCase : cases) {
        Window window({true, testCase.readiness});
        window.show();
        if (testCase.selection) window.choose();
        window.model.setIncludeCodex(testCase.includeCodex);
        ASSERT_NE(window.button(testCase.scanTitle), nullptr) << testCase.name;
        EXPECT_EQ(window.button(testCase.scanTitle)->isEnabled(), testCase.scanEnabled) << testCase.name;
        EXPECT_TRUE(window.button("Choose Repository…")->isEnabled()) << testCase.name;
    }
}

TEST(Window, ShowsAScanUnderWayAndCancelsItWithEscape) {
    Window window;
    window.show();
    window.choose();
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTest::keyClick(&window.view, Qt::Key_R, Qt::ControlModifier);
    ASSERT_TRUE(eventually([&] { return window.says("Reading Claude startup context…"); }));
    EXPECT_TRUE(window.says("Scan in progress"));
    EXPECT_TRUE(window.says("Measuring the selected tools and local instruction files."));
    EXPECT_TRUE(window.says("Scanning"));
    EXPECT_FALSE(window.button("Scanning…")->isEnabled());
    EXPECT_FALSE(window.button("Choose Repository…")->isEnabled());
    EXPECT_FALSE(window.button("Include Codex")->isEnabled());
    auto* cancel = window.button("Cancel scan");
    ASSERT_NE(cancel, nullptr);
    cancel->setFocus();
    // In the first half second no key ends the scan: it may be the one that began it, pressed again.
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(cancel, key);
    EXPECT_FALSE(window.model.isCancelling());
    ASSERT_TRUE(eventually([&] { return cancel->shortcut() == Qt::Key_Escape; }));
    EXPECT_GE(sinceStart.elapsed(), 500);

    QTest::keyClick(&window.view, Qt::Key_Escape);
    ASSERT_TRUE(
        eventually([&] { return !window.model.isScanTaskRunning() && window.model.state().isIdle(); }));
    EXPECT_TRUE(window.says("Start a context scan"));
    EXPECT_TRUE(window.says("Ready to scan"));
    EXPECT_EQ(window.button("Cancel scan"), nullptr);
    // The keyboard stays with the page.
    EXPECT_TRUE(window.view.findChild<OverviewView*>()->isAncestorOf(window.view.focusWidget()));
}

TEST(Window, TakesTheCancelButtonAwayWhileItStops) {
    Window window;
    window.show();
    window.choose();
    window.view.startScan();
    window.model.cancel();
    EXPECT_TRUE(window.says("Stopping scan…"));
    EXPECT_EQ(window.button("Cancel scan"), nullptr);
    EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
}

TEST(Window, ShowsAFailureAndRetriesWithReturn) {
    Window window;
    window.show();
    window.choose();
    window.tools.probe->answer(ProbeError(ProbeError::SessionFailed{"<b>no</b>"}));
    window.view.startScan();
    ASSERT_TRUE(eventually([&] { return window.model.state().error() != nullptr; }));
    EXPECT_TRUE(window.says("Scan failed"));
    EXPECT_TRUE(window.says("The probe session reported an error."));
    EXPECT_TRUE(window.says("<b>no</b>"));
    ASSERT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));

    window.tools.probe->answer(sampleResult());
    QTest::keyClick(&window.view, Qt::Key_Return);
    ASSERT_TRUE(eventually([&] { return window.model.state().report() != nullptr; }));
    EXPECT_TRUE(window.says("Scan complete"));
}

TEST(Window, BringsTheOverviewForwardWhenAFolderIsChosenOrAScanStarts) {
    Window window;
    window.show();
    window.nextChoice = window.folderPath();
    window.button("Trends")->click();
    EXPECT_TRUE(window.says("No recorded scans yet"));
    window.button("Choose Repository…")->click();
    EXPECT_EQ(window.view.page(), AppPage::overview);
    EXPECT_EQ(window.model.selection()->path, window.folderPath());
    window.view.setPage(AppPage::compare);
    window.view.startScan();
    EXPECT_EQ(window.view.page(), AppPage::overview);
    // Now a scan runs: neither the panel nor a folder from elsewhere may change the selection.
    window.nextChoice = "/elsewhere";
    window.view.chooseFolder();
    window.view.selectFolder("/elsewhere");
    EXPECT_EQ(window.model.selection()->path, window.folderPath());
}

TEST(Window, SwitchesPagesByKeyAndByButton) {
    Window window;
    window.show();
    for (const auto& [key, page] : {std::pair{Qt::Key_2, AppPage::trends},
                                    {Qt::Key_3, AppPage::compare},
                                    {Qt::Key_1, AppPage::overview}}) {
        QTest::keyClick(&window.view, key, Qt::ControlModifier);
        EXPECT_EQ(window.view.page(), page);
        EXPECT_TRUE(window.button(AppPages::title(page))->isChecked());
    }
    EXPECT_EQ(AppPages::fromTitle("Trends"), AppPage::trends);
    EXPECT_FALSE(AppPages::fromTitle("trends"));
}

TEST(Window, IsReadFromTheSidebarOnAndWithoutMarkup) {
    Window window;
    window.show();
    for (QWidget* widget : window.view.findChildren<QWidget*>()) {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(element->text(QAccessible::Description).contains('<')) << qPrintable(widget->toolTip());
    }
    const QStringList all = spoken(window.view);
    EXPECT_LT(all.indexOf("Scan setup"), all.indexOf("Start a context scan"));
}

TEST(Window, TakesOneLocalFolderThatIsDroppedOnIt) {
    struct Case {
        const char* name;
        QList<QUrl> urls;
        std::string taken; ///< the folder that is selected
    };
    Window window;
    window.show();
    const QUrl folder = QUrl::fromLocalFile(window.folder.path() + "/");
    const std::string path = window.folder.path().toStdString(), bytes = path + "/a\xff";
    std::filesystem::create_directory(bytes);
    const std::vector<Case> cases{{"a remote folder", {QUrl("https://example.org/x")}, ""},
                                  {"two folders", {folder, folder}, ""},
                                  {"a file", {QUrl::fromLocalFile("/proc/self/exe")}, ""},
                                  {"a folder", {folder}, path},
                                  {"no text", {QUrl(folder.toString() + "a%FF")}, bytes}};
    for (const Case& testCase : cases) {
        QMimeData data;
        data.setUrls(testCase.urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(&window.view, &enter);
        EXPECT_EQ(enter.isAccepted(), !testCase.taken.empty()) << testCase.name;
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window.view, &drop);
        const auto& selection = window.model.selection();
        EXPECT_EQ(selection ? selection->path : "", testCase.taken) << testCase.name;
    }
}

TEST(Window, ShowsHostileNamesAsTheyAreAndStaysWithinItsSize) {
    Window window;
    window.show();
    window.view.resize(960, 640);
    const QString name = "<b>x<b>" + QString(200, 'n');
    window.view.selectFolder("/" + std::string(3'000, 'd') + "/" + name.toStdString());
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.says(name));
    EXPECT_EQ(window.view.size(), QSize(960, 640));
    EXPECT_LE(window.view.minimumSizeHint().width(), 960);
    EXPECT_LE(window.view.minimumSizeHint().height(), 640);
}

TEST(Window, RechecksTheToolsOnRequest) {
    Window window({true, {ToolReadiness::signedOut, ToolReadiness::notInstalled}});
    window.show();
    EXPECT_TRUE(window.says("Claude: Sign-in needed"));
    EXPECT_TRUE(window.says("Codex: Not installed"));
    window.readinessAnswer = {ToolReadiness::ready, ToolReadiness::unknown};
    QAbstractButton* recheck = window.button("Recheck setup");
    recheck->click();
    EXPECT_EQ(recheck->text(), "Checking…");
    EXPECT_FALSE(recheck->isEnabled());
    ASSERT_TRUE(eventually([&] { return recheck->isEnabled(); }));
    EXPECT_TRUE(window.says("Claude: Signed in"));
    EXPECT_TRUE(window.says("Codex: Sign-in could not be verified"));
}

TEST(SettingsStore, BringsTheWindowAndTheFlagBack) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("settings.ini");
    Window first;
    first.view.resize(1'000, 700);
    first.view.splitter()->setSizes({300, 700});
    first.show();
    {
        SettingsStore store(file);
        EXPECT_FALSE(store.onboardingCompleted());
        store.setOnboardingCompleted(true);
        store.saveWindow(first.view, *first.view.splitter());
    }
    Window second;
    SettingsStore store(file);
    EXPECT_TRUE(store.onboardingCompleted());
    EXPECT_TRUE(store.restoreWindow(second.view, *second.view.splitter()));
    second.show();
    EXPECT_EQ(second.view.size(), first.view.size());
    EXPECT_EQ(second.view.splitter()->sizes(), first.view.splitter()->sizes());
}

} // namespace
} // namespace loadscope::testing
