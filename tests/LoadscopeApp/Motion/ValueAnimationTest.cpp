// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <vector>

namespace loadscope {
namespace {

TEST(ValueAnimation, MovesThroughTheValuesBetweenAndRestsAtTheEnd) {
    AppTheme::current().force(Appearance::light, false);
    std::vector<double> values;
    ValueAnimation animation(nullptr, 0, [&values](double value) { values.push_back(value); });
    QSignalSpy finished(&animation, &QVariantAnimation::finished);
    animation.animateTo(1, 60);
    ASSERT_TRUE(finished.wait(5'000));
    AppTheme::current().force(Appearance::light, true);
    EXPECT_EQ(animation.value(), 1);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_EQ(animation.state(), QAbstractAnimation::Stopped);
}

TEST(ValueAnimation, StandsStillWhereMotionIsUnwelcomeButFades) {
    AppTheme::current().force(Appearance::light, true);
    ValueAnimation animation(nullptr, 1, [](double) {});
    animation.appear(10'000);
    EXPECT_EQ(animation.value(), 1);
    animation.animateTo(0, 10'000);
    EXPECT_EQ(animation.value(), 0);
    animation.fadeTo(1, 10'000);
    EXPECT_EQ(animation.state(), QAbstractAnimation::Running);
}

TEST(ValueAnimation, AppearsOnce) {
    AppTheme::current().force(Appearance::light, false);
    ValueAnimation animation(nullptr, 1, [](double) {});
    animation.appear(10'000);
    EXPECT_EQ(animation.value(), 0);
    animation.jumpTo(1);
    animation.appear(10'000);
    AppTheme::current().force(Appearance::light, true);
    EXPECT_EQ(animation.value(), 1);
}

} // namespace
} // namespace loadscope
