// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Controls/BreadCrumb.h"
#include "LoadscopeApp/Pages/Report/FileInventory.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QTest>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

class ReportMembers : public ::testing::Test {
protected:
    static ScanReport report() {
        ScanReport report = reportOf(detailedResult(), sampleFiles());
        report.largestChangeable = {
            {ChangeableGroup::Kind::server, "git hub", {3'214}, false, "/src/.mcp.json", "project"}};
        report.missingServers = {"fig<b>ma"};
        return report;
    }

    ReportPage page_{report()};
    ReportTable* table_ = page_.find<ReportTable>(QStringLiteral("Rows by category"));
};

TEST_F(ReportMembers, OpenForAClientOfTheAccessibilityBus) {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(table_);
    const auto childNamed = [&](const char* name) -> QAccessibleInterface* {
        for (int index = 0; index < spoken->childCount(); ++index)
            if (spoken->child(index)->text(QAccessible::Name) == QLatin1String(name))
                return spoken->child(index);
        return nullptr;
    };
    auto* donut = page_.find<DonutChart>();
    EXPECT_EQ(childNamed("github"), nullptr);
    for (const char* name : {"MCP tools", "github"}) {
        QAccessibleInterface* row = childNamed(name);
        ASSERT_NE(row, nullptr) << name;
        ASSERT_NE(row->actionInterface(), nullptr) << name;
        row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    }
    EXPECT_NE(childNamed("tool_4"), nullptr);
    EXPECT_NE(childNamed("tool_26_with|a_<b>long</b>_name"), nullptr) << "names are data";
    // Both servers and what is not itemised stand around the sector, and go again.
    EXPECT_EQ(donut->shownParts(2), 3U);
    table_->setActive(table_->places().shown()[4]);
    EXPECT_EQ(donut->active(), DonutChart::Item(2)) << "a tool highlights the sector of its category";
    table_->setOpen(2, false);
    EXPECT_EQ(donut->shownParts(2), 0U);
}

TEST_F(ReportMembers, CountEachMemberOfTheReportOnce) {
    for (std::size_t row = 0; row < table_->rows().size(); ++row)
        table_->setOpen(row, true);
    QStringList shown;
    for (const std::size_t row : table_->places().shown())
        shown.append(table_->rows()[row].name);
    for (const ContextMember& member : page_.report->details.members)
        EXPECT_EQ(shown.count(QString::fromStdString(member.name)), 1) << member.name;
    const QStringList said = page_.said();
    EXPECT_TRUE(said.contains(QStringLiteral("On demand, not counted: 71,800 (MCP tools, system tools)")));
    EXPECT_TRUE(said.contains(QStringLiteral("Reserved: 33,000 autocompact buffer · Free: 134,800")));
}

TEST_F(ReportMembers, CanBeCopiedAndTellWhatToChange) {
    const auto press = [&](const QString& title) {
        for (auto* button : page_.page.findChildren<QAbstractButton*>())
            if (button->text() == title) button->click();
        return QGuiApplication::clipboard()->text().toStdString();
    };
    EXPECT_EQ(press(QStringLiteral("Copy Details")), DetailsPresentation::copyableDetails(*page_.report));
    EXPECT_EQ(press(QStringLiteral("Copy")), "claude mcp remove 'git hub' --scope project");
    const QStringList said = page_.said();
    EXPECT_TRUE(said.contains(QStringLiteral("named in /src/.mcp.json")));
    EXPECT_EQ(said.filter(QStringLiteral("fig<b>ma")).size(), 1);
}

TEST_F(ReportMembers, AreTilesWithinTiles) {
    auto* treemap = page_.find<MemberTreemapView>();
    ASSERT_NE(treemap, nullptr);
    treemap->setFocus();
    QStringList walked;
    for (int step = 0; step < 6; ++step) {
        QTest::keyClick(treemap, Qt::Key_Down);
        walked.append(treemap->tip().title());
    }
    // From large to small, each category before what is in it.
    EXPECT_EQ(walked,
              (QStringList{"System tools", "System prompt", "MCP tools", "github", "tool_0", "tool_2"}));
    const std::size_t tool = *treemap->active();
    ReportPage::hover(treemap, {2, 2});
    EXPECT_EQ(treemap->tip().title(), QStringLiteral("System tools"));
    const RectF tile = treemap->tiles().tiles()[tool];
    ReportPage::hover(treemap, {tile.x + tile.width / 2, tile.y + tile.height / 2});
    EXPECT_EQ(treemap->active(), MarkedWidget::Item(tool)) << "the deepest tile is the one under the pointer";
}

TEST_F(ReportMembers, AreGoneIntoAndBackOutOf) {
    auto* treemap = page_.find<MemberTreemapView>();
    auto* way = page_.find<BreadCrumb>();
    const auto place = [&] {
        QStringList names;
        for (const std::string& step : treemap->treemap().steps(treemap->zoomed()))
            names.append(QString::fromStdString(step));
        ReportPage::settle();
        return names.join(" > ").toStdString();
    };
    const std::string whole = place();
    const auto middleOf = [&](const char* name) {
        for (std::size_t node = 0; node < treemap->tiles().tiles().size(); ++node) {
            const RectF& tile = treemap->tiles().tiles()[node];
            if (treemap->treemap().name(node) == name && !tile.isEmpty())
                return QPointF(tile.x + tile.width / 2, tile.y + tile.height / 2).toPoint();
        }
        return QPoint();
    };
    // One level a click, wherever in the group it falls.
    const QPoint tool = middleOf("tool_0");
    QTest::mouseClick(treemap, Qt::LeftButton, {}, tool);
    EXPECT_EQ(place(), "All categories > MCP tools");
    QTest::mouseClick(treemap, Qt::LeftButton, {}, middleOf("tool_0"));
    EXPECT_EQ(place(), "All categories > MCP tools > github");
    QTest::mouseClick(treemap, Qt::LeftButton, {}, middleOf("tool_0"));
    EXPECT_EQ(place(), "All categories > MCP tools > github") << "a tool holds nothing";
    const RectF& tile = treemap->tiles().tiles()[*treemap->itemOf(0)];
    EXPECT_GT(tile.width * tile.height, treemap->width() * treemap->height() / 40.0) << "it has the room";
    QStringList steps;
    for (auto* button : way->findChildren<QAbstractButton*>())
        if (button->isVisibleTo(way)) steps.append(button->accessibleName());
    EXPECT_EQ(steps, (QStringList{"All categories", "MCP tools"}));
    treemap->setFocus();
    QTest::keyClick(treemap, Qt::Key_Backspace);
    EXPECT_EQ(place(), "All categories > MCP tools");
    EXPECT_EQ(treemap->tip().title(), "github") << "the keyboard is where it came from";
    QTest::keyClick(treemap, Qt::Key_Return);
    EXPECT_EQ(place(), "All categories > MCP tools > github");
    for (auto* button : way->findChildren<QAbstractButton*>())
        if (button->isVisibleTo(way) && button->accessibleName() == "All categories") {
            button->click();
            break;
        }
    EXPECT_EQ(place(), whole);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(treemap);
    spoken->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(place(), "All categories > MCP tools");
    QTest::keyClick(treemap, Qt::Key_Backspace);
    QTest::keyClick(treemap, Qt::Key_Backspace);
    EXPECT_EQ(place(), whole);
    EXPECT_FALSE(treemap->zoomOut());
}

TEST_F(ReportMembers, HighlightTheirRowsAndTheRowsThem) {
    auto* treemap = page_.find<MemberTreemapView>();
    const MemberTreemap& nodes = treemap->treemap();
    for (std::size_t node = 0; node < nodes.nodes().size(); ++node) {
        EXPECT_EQ(table_->rows().at(nodes.lineOf(node)).name.toStdString(),
                  DisplayText::line(nodes.name(node)).toStdString());
        EXPECT_EQ(nodes.nodeOfLine(nodes.lineOf(node)), node);
    }
    const std::size_t tool = *nodes.nodeOfLine(4);
    treemap->setActive(tool);
    EXPECT_EQ(table_->active(), MarkedWidget::Item(2)) << "the category that the tool's row stands below";
    table_->setOpen(2, true);
    table_->setOpen(3, true);
    treemap->setActive(std::nullopt);
    treemap->setActive(tool);
    EXPECT_EQ(table_->active(), MarkedWidget::Item(4));
    table_->setActive(3);
    EXPECT_EQ(treemap->active(), nodes.nodeOfLine(3));
    EXPECT_FALSE(treemap->tip().isVisibleTo(treemap)) << "the pointer is elsewhere";
    table_->setActive(std::nullopt);
    EXPECT_EQ(treemap->active(), MarkedWidget::Item());

    auto* files = page_.find<FileInventory>();
    auto* tiles = page_.find<TreemapView>();
    tiles->setActive(1);
    EXPECT_EQ(files->active(), MarkedWidget::Item(1));
    files->setActive(0);
    EXPECT_EQ(tiles->active(), MarkedWidget::Item(0));
    EXPECT_FALSE(tiles->tip().isVisibleTo(tiles));
}

} // namespace
} // namespace loadscope::testing
