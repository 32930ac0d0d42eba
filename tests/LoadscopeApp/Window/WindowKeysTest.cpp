// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// What keys do in the whole window, and where the keyboard is afterwards.
#include "LoadscopeApp/Pages/Overview/OverviewView.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeApp/Window/PageList.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QLabel>
#include <QScreen>
#include <QTest>
#include <QTimer>

namespace loadscope::testing {
namespace {

using enum ToolReadiness;

/// A window whose scans fail, with a folder chosen and the failure of one on screen.
class FailedWindow : public Window {
public:
    FailedWindow() {
        show();
        view.activateWindow();
        choose();
        tools.probe->answer(ProbeError(ProbeError::TimedOut{}));
        view.startScan();
        EXPECT_TRUE(eventually([this] { return model.state().error() && !model.isScanTaskRunning(); }));
    }
    void recheck(ReadinessChecker::Result answer) {
        readinessAnswer = answer;
        readiness.recheck();
        EXPECT_TRUE(eventually([this] { return !readiness.isChecking(); }));
    }
};

TEST(Window, OffersRetryOnlyWhenItMayScanAndElseSaysWhyNot) {
    FailedWindow window;
    struct Case {
        ReadinessChecker::Result readiness;
        bool includeCodex;
        QString reason;
    };
    QAbstractButton* retry = window.button("Retry scan");
    ASSERT_NE(retry, nullptr);
    for (const Case& testCase : std::vector<Case>{{{signedOut, ready}, false, "Claude: Sign-in needed"},
                                                  {{notInstalled, ready}, false, "Claude: Not installed"},
                                                  {{ready, signedOut}, true, "Codex: Sign-in needed"},
                                                  {{ready, signedOut}, false, ""},
                                                  {{unknown, unknown}, true, ""}}) {
        window.model.setIncludeCodex(testCase.includeCodex);
        window.recheck(testCase.readiness);
        EXPECT_EQ(retry->isEnabled(), testCase.reason.isEmpty()) << testCase.reason.toStdString();
        EXPECT_EQ(retry->accessibleDescription(), testCase.reason);
        auto* overview = window.view.findChild<OverviewView*>();
        int said = 0;
        for (auto* label : overview->findChildren<QLabel*>())
            said += !testCase.reason.isEmpty() && label->isVisible() && label->text() == testCase.reason;
        EXPECT_EQ(said, testCase.reason.isEmpty() ? 0 : 1);
    }
    window.readiness.recheck();
    EXPECT_FALSE(retry->isEnabled()) << "while the tools are asked";
    EXPECT_EQ(retry->accessibleDescription(), "Checking…");
    EXPECT_TRUE(eventually([&] { return !window.readiness.isChecking(); }));
}

TEST(Window, StartsNoScanThatTheToolsDoNotPermit) {
    FailedWindow window;
    window.recheck({signedOut, ready});
    window.view.setPage(AppPage::trends);
    window.view.startScan();
    QTest::keyClick(&window.view, Qt::Key_F5);
    QTest::keyClick(&window.view, Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(window.model.state().isScanning());
    EXPECT_EQ(window.view.page(), AppPage::trends);
    window.recheck({ready, ready});
    QTest::keyClick(&window.view, Qt::Key_F5);
    EXPECT_TRUE(window.model.state().isScanning());
    EXPECT_EQ(window.view.page(), AppPage::overview);
    EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));

    Window fresh;
    fresh.show();
    fresh.view.setPage(AppPage::compare);
    QTest::keyClick(&fresh.view, Qt::Key_F5);
    EXPECT_EQ(fresh.view.page(), AppPage::compare) << "there is nothing to scan again";
}

TEST(Window, LeavesTheKeyboardWhereTheUserPutIt) {
    FailedWindow window;
    const auto focus = [&window] { return window.view.focusWidget(); };
    QAbstractButton* recheck = window.button("Recheck setup");
    recheck->setFocus();
    QTest::keyClick(recheck, Qt::Key_Return);
    EXPECT_FALSE(recheck->isEnabled());
    EXPECT_EQ(focus(), recheck) << "while it checks";
    ASSERT_TRUE(eventually([&] { return recheck->isEnabled(); }));
    EXPECT_EQ(focus(), recheck);

    QAbstractButton* scan = window.button("Scan Again");
    window.tools.probe->answer(FakeProbe::Hang{});
    scan->setFocus();
    QTest::keyClick(scan, Qt::Key_Return);
    ASSERT_TRUE(window.model.state().isScanning());
    QTest::keyClick(focus(), Qt::Key_Return);
    EXPECT_FALSE(window.model.isCancelling()) << "Return, pressed again";
    EXPECT_EQ(focus(), scan);
    QTest::keyClick(focus(), Qt::Key_Tab);
    EXPECT_NE(focus(), scan) << "a button that is off for a while does not hold the keyboard fast";
    window.model.cancel();
    ASSERT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
}

TEST(Window, TakesTheKeyboardFromPageToPageWithItsKeys) {
    FailedWindow window;
    const auto press = [&window](Qt::Key key) { QTest::keyClick(&window.view, key, Qt::ControlModifier); };
    QAbstractButton* choose = window.button("Choose Repository…");
    choose->setFocus();
    press(Qt::Key_2);
    EXPECT_EQ(window.view.focusWidget(), choose);
    window.button("Trends")->setFocus();
    press(Qt::Key_3);
    EXPECT_EQ(window.view.focusWidget(), window.button("Compare"));
    press(Qt::Key_1);
    EXPECT_EQ(window.view.focusWidget(), window.button("Overview"));
    window.button("Retry scan")->setFocus();
    press(Qt::Key_2);
    ASSERT_NE(window.view.focusWidget(), nullptr);
    EXPECT_EQ(qobject_cast<PageButton*>(window.view.focusWidget()), nullptr) << "no other page's button";
    press(Qt::Key_1);
    EXPECT_EQ(window.view.focusWidget(), window.button("Retry scan"));
}

TEST(Window, EndsTheProgramByKeyAlsoBehindASheet) {
    for (const bool sheet : {false, true}) {
        Window window;
        window.show();
        window.view.activateWindow();
        if (sheet) window.view.presentOnboarding();
        QTimer::singleShot(0, [&] { QTest::keyClick(&window.view, Qt::Key_Q, Qt::ControlModifier); });
        QTimer patience;
        QObject::connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        patience.start(10'000);
        EXPECT_EQ(QApplication::exec(), 0) << sheet;
        EXPECT_FALSE(window.view.isVisible()) << sheet;
    }
}

TEST(Window, IsAtFirstNoLargerThanTheScreen) {
    struct Case {
        QSize available;
        QSize expected;
    };
    for (const Case& testCase : {Case{{1920, 1080}, {1180, 780}},
                                 {{1366, 768}, {1180, 728}},
                                 {{1024, 768}, {1024, 728}},
                                 {{800, 600}, {960, 640}}})
        EXPECT_EQ(ContentView::firstSize(testCase.available), testCase.expected);
    const Window window;
    EXPECT_EQ(window.view.size(), ContentView::firstSize(window.view.screen()->availableSize()));
}

} // namespace
} // namespace loadscope::testing
