// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Cards/TrendPill.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QAccessible>
#include <QEnterEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace loadscope {
namespace {

TEST(TrendPill, NamesTheChangeInWordsAndColour) {
    using enum TrendDirection;
    struct Case {
        TrendPillText pill;
        QString text;
        QString symbol;
        ThemeColor tint;
    };
    const std::vector<Case> cases{
        {TrendPillText::of({}, {}), "First scan", "", ThemeColor::secondaryText},
        {TrendPillText::of(up, {}), "First scan", "", ThemeColor::secondaryText},
        {TrendPillText::of(flat, 0), "±0", "equal", ThemeColor::secondaryText},
        {TrendPillText::of(up, 4'120), "+4,120", "arrow.up.right", ThemeColor::bandHeavy},
        {TrendPillText::of(down, -7'000), "-7,000", "arrow.down.right", ThemeColor::bandLean},
    };
    for (const Case& testCase : cases) {
        const TrendPill pill(testCase.pill);
        EXPECT_EQ(pill.look().text, testCase.text);
        EXPECT_EQ(pill.look().symbol, testCase.symbol);
        EXPECT_EQ(pill.look().tint, testCase.tint);
    }
}

TEST(CollapsibleSection, ShowsItsContentAndSaysSo) {
    auto* body = new TextLabel("inside");
    CollapsibleSection section("Full report", "A detail.", body);
    section.resize(400, 300);
    section.show();
    auto* header = section.findChild<DisclosureButton*>();
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(header);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Full report");
    EXPECT_EQ(spoken->text(QAccessible::Value), "Collapsed");
    EXPECT_EQ(spoken->text(QAccessible::Description), "Shows or hides this section");
    EXPECT_FALSE(body->isVisible());
    EXPECT_GE(header->height(), 44);

    QTest::keyClick(header, Qt::Key_Return);
    EXPECT_EQ(spoken->text(QAccessible::Value), "Expanded");
    EXPECT_TRUE(spoken->state().expanded);
    EXPECT_TRUE(body->isVisible());

    QTest::mouseClick(header, Qt::LeftButton);
    EXPECT_FALSE(section.isExpanded());
    EXPECT_FALSE(body->isVisible());
}

TEST(ReportSurface, RisesAtOnceUnderThePointerWhenMotionIsUnwelcome) {
    ReportSurface surface;
    QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
    QCoreApplication::sendEvent(&surface, &enter);
    EXPECT_EQ(surface.elevation(), 1);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&surface, &leave);
    EXPECT_EQ(surface.elevation(), 0);
}

} // namespace
} // namespace loadscope
