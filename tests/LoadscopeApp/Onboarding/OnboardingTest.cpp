// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Onboarding/OnboardingView.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QTest>
#include <QTimer>

namespace loadscope::testing {
namespace {

/// A window at its first launch, with the walkthrough up.
class FirstLaunch : public Window {
public:
    FirstLaunch() : Window({false, {ToolReadiness::ready, ToolReadiness::ready}}) {
        show();
        EXPECT_TRUE(eventually([this] { return sheet() != nullptr && button("Next") != nullptr; }));
    }
    [[nodiscard]] Sheet* sheet() const { return view.onboardingSheet(); }
    bool waitUntilGone() {
        return eventually([this] { return sheet() == nullptr; });
    }
};

TEST(Onboarding, WalksThroughFourStepsByReturnAndDoesNotComeBack) {
    FirstLaunch window;
    EXPECT_FALSE(window.button("Choose Repository…")->isEnabled());
    for (int step = 1; step <= 4; ++step) {
        EXPECT_TRUE(window.says(QStringLiteral("Step %1 of 4").arg(step)));
        EXPECT_EQ(window.button("Back") != nullptr, step > 1);
        EXPECT_EQ(window.button("Skip") != nullptr, step < 4);
        EXPECT_FALSE(window.store.onboardingCompleted());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    EXPECT_TRUE(window.store.onboardingCompleted());
    ASSERT_TRUE(window.waitUntilGone());
    EXPECT_TRUE(window.button("Choose Repository…")->isEnabled());
}

TEST(Onboarding, ShowsThePictureOfEachStep) {
    FirstLaunch window;
    window.button("Next")->click();
    EXPECT_TRUE(window.says("Look for the folder icon in the top-right toolbar."));
    window.button("Next")->click();
    EXPECT_TRUE(window.says("Scanning repository…"));
    window.button("Next")->click();
    EXPECT_TRUE(window.says("Heavy: worth trimming"));
    window.button("Back")->click();
    EXPECT_TRUE(window.says("Step 3 of 4"));
}

TEST(Onboarding, IsCompletedHoweverItIsClosed) {
    {
        FirstLaunch window;
        window.button("Skip")->click();
        ASSERT_TRUE(window.waitUntilGone());
        EXPECT_TRUE(window.store.onboardingCompleted());
    }
    FirstLaunch window;
    QTest::keyClick(window.sheet(), Qt::Key_Escape);
    ASSERT_TRUE(window.waitUntilGone());
    EXPECT_TRUE(window.store.onboardingCompleted());
}

TEST(Onboarding, ComesAMomentAfterTheWindowUnlessThatHasGoneOrItWasSeen) {
    struct Case {
        const char* name;
        bool wasSeen;
        bool closes;
    };
    for (const Case& testCase :
         {Case{"first launch", false, false}, {"closed at once", false, true}, {"seen", true, false}}) {
        Window window({testCase.wasSeen, {ToolReadiness::ready, ToolReadiness::ready}});
        QElapsedTimer sinceShown;
        sinceShown.start();
        window.view.show();
        // The like of the window's own timer, begun after it: it rings later.
        QTimer later;
        later.setSingleShot(true);
        later.setTimerType(Qt::PreciseTimer);
        later.start(ContentView::onboardingDelayMilliseconds);
        if (testCase.closes) window.view.close();
        const auto sheet = [&] { return window.view.onboardingSheet() != nullptr; };
        const bool isShown = !testCase.wasSeen && !testCase.closes;
        ASSERT_TRUE(eventually([&] { return sheet() || !later.isActive(); })) << testCase.name;
        EXPECT_EQ(sheet(), isShown) << testCase.name;
        if (isShown) {
            EXPECT_GE(sinceShown.elapsed(), 299);
        }
        EXPECT_EQ(window.store.onboardingCompleted(), testCase.wasSeen) << testCase.name;
    }
}

} // namespace
} // namespace loadscope::testing
