// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Tables/TableLayout.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

using Item = MarkedWidget::Item;

/// A group of two members before another group.
std::vector<TableRow> groups() {
    return {{0, "Tools", {}, {"30"}, 0},
            {{}, "search", {}, {"20"}, 1},
            {{}, "fetch", {}, {"10"}, 1},
            {1, "Skills", {}, {"5"}, 0}};
}

TEST(DataTable, ShowsSomeOfItsRowsInAnyOrder) {
    ReportTable table({"Name", {"Tokens"}, {}}, groups(), "Groups");
    table.resize(400, table.heightForWidth(400));
    table.show();
    const int whole = table.heightForWidth(400);
    const double number = table.cell(0, 1).x();
    EXPECT_EQ(table.cell(1, 0).x() - table.cell(0, 0).x(), 16) << "a member stands in";
    QTest::mouseDClick(&table, Qt::LeftButton, {}, table.rowArea(2).center());
    table.setActive(1);

    table.showRows({3, 0});
    table.resize(400, table.heightForWidth(400));
    EXPECT_LT(table.height(), whole);
    EXPECT_EQ(table.cell(0, 1).x(), number) << "no column moves";
    EXPECT_EQ(table.active(), Item());
    EXPECT_EQ(table.selectedText(), QString());
    EXPECT_TRUE(table.rowArea(1).isEmpty());
    EXPECT_LT(table.rowArea(3).top(), table.rowArea(0).top());
    QStringList read;
    for (int mark = 0; mark < table.markCount(); ++mark)
        read.append(table.markText(mark));
    EXPECT_EQ(read, (QStringList{"Name", "Tokens", "Skills", "5", "Tools", "30"}));
    for (const Item row : {Item(3), Item(0), Item(3)}) {
        QTest::keyClick(&table, Qt::Key_Down);
        EXPECT_EQ(table.active(), row);
    }
    EXPECT_EQ(table.currentMark(), 2);
    QSignalSpy menus(&table, &ReportTable::menuRequested);
    const QPoint place = table.rowArea(0).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, table.mapToGlobal(place));
    QApplication::sendEvent(&table, &event);
    ASSERT_EQ(menus.size(), 1);
    EXPECT_EQ(menus[0][0].value<std::size_t>(), 0U);
}

TEST(TableLayout, CutsANameWhereItsOwnNumberBegins) {
    const TableColumns columns{{}, {QString()}, {}};
    const std::vector<TableRow> rows{{{}, "a", {}, {"1,000,000"}}, {{}, QString(80, 'x'), {}, {"7"}}};
    TableLayout layout(columns, rows, {3.5, 12, false, false});
    layout.measure({QFont(), QFont(), QFont()});
    layout.setWidth(160);
    EXPECT_GT(layout.nameBox(1).width(), layout.nameBox(0).width());
    const BrokenText name = layout.broken(rows[1].name, layout.nameBox(1).width());
    EXPECT_EQ(name.lines.size(), 1U);
    EXPECT_TRUE(name.shown.endsWith(QStringLiteral("…")));
    EXPECT_EQ(name.original(static_cast<int>(name.shown.size())), 80);
    EXPECT_EQ(layout.row(0).height(), layout.row(1).height());
}

} // namespace
} // namespace loadscope::testing
