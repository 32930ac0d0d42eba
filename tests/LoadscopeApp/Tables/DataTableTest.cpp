// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Tables/TableHeader.h"
#include "LoadscopeApp/Tables/TableLayout.h"

#include <QAccessible>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
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
    table.setOpen(0, true);
    table.resize(400, table.heightForWidth(400));
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
}

/// What the table shows, an open row with a "v" behind it and a closed one with a ">".
QString outlineOf(const ReportTable& table) {
    QStringList names;
    for (const std::size_t row : table.places().shown()) {
        const bool opens = table.outline().opens(row);
        names.append(table.rows()[row].name + (opens ? table.outline().isOpen(row) ? "v" : ">" : ""));
    }
    return names.join(QLatin1Char(' '));
}

TEST(DataTable, OpensRowsByKeyboardChevronAndAssistiveTechnology) {
    std::vector<TableRow> rows = groups();
    rows.insert(rows.begin() + 2, {{}, "deep", {}, {"1"}, 2});
    ReportTable table({"Name", {"Tokens"}, {}}, rows, "Groups");
    QSignalSpy changes(&table, &ReportTable::openChanged);
    table.resize(400, 300);
    table.show();
    EXPECT_EQ(outlineOf(table), "Tools> Skills");
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&table, key);
        return outlineOf(table) + (table.active() ? " at " + rows[*table.active()].name : QString());
    };
    const struct {
        Qt::Key key;
        const char* shown;
    } steps[] = {
        {Qt::Key_Down, "Tools> Skills at Tools"},
        {Qt::Key_Left, "Tools> Skills at Tools"}, // nothing above
        {Qt::Key_Right, "Toolsv search> fetch Skills at Tools"},
        {Qt::Key_Right, "Toolsv search> fetch Skills at search"},
        {Qt::Key_Return, "Toolsv searchv deep fetch Skills at search"},
        {Qt::Key_Right, "Toolsv searchv deep fetch Skills at deep"},
        {Qt::Key_Right, "Toolsv searchv deep fetch Skills at deep"}, // nothing below
        {Qt::Key_Left, "Toolsv searchv deep fetch Skills at search"},
        {Qt::Key_Up, "Toolsv searchv deep fetch Skills at Tools"},
        {Qt::Key_Left, "Tools> Skills at Tools"},
        {Qt::Key_Space, "Toolsv searchv deep fetch Skills at Tools"}, // what was open below is so again
    };
    for (const auto& step : steps)
        EXPECT_EQ(press(step.key), step.shown);
    EXPECT_EQ(changes.size(), 4);

    table.resize(400, table.heightForWidth(400));
    const QRectF name = table.cell(0, 0);
    QTest::mouseClick(&table, Qt::LeftButton, {}, QPoint(6, static_cast<int>(name.center().y())));
    EXPECT_EQ(outlineOf(table), "Tools> Skills");
    table.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(press(Qt::Key_Left), "Toolsv searchv deep fetch Skills at Tools");
    QTest::mouseClick(&table, Qt::LeftButton, {}, QPoint(394, static_cast<int>(name.center().y())));
    EXPECT_EQ(outlineOf(table), "Tools> Skills");

    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&table);
    const auto mark = [&](int index) { return spoken->child(index); };
    EXPECT_TRUE(mark(2)->state().expandable && mark(2)->state().collapsed && !mark(2)->state().expanded);
    EXPECT_FALSE(mark(4)->state().expandable);
    EXPECT_FALSE(
        mark(4)->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()))
        << "Skills opens to nothing";
    mark(2)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(mark(2)->state().expanded);
    EXPECT_EQ(mark(4)->text(QAccessible::Name), "search");
}

/// Many rows, in a page that scrolls.
class LongTable {
public:
    LongTable() {
        std::vector<TableRow> rows;
        for (int row = 0; row < 200; ++row)
            rows.push_back({{},
                            QString("row %1").arg(row, 3, 10, QLatin1Char('0')),
                            {},
                            {QString::number(row % 7)},
                            0,
                            {row % 7}});
        table = new ReportTable({"Name", {"Tokens"}, {}}, rows, "Long");
        page.setWidget(table);
        page.setWidgetResizable(true);
        page.resize(400, 300);
        page.show();
        QApplication::processEvents();
    }
    ~LongTable() { DataTable::forgetSorts(); }
    LongTable(const LongTable&) = delete;
    LongTable& operator=(const LongTable&) = delete;

    [[nodiscard]] QString first() const { return table->rows()[table->places().shown().front()].name; }

    QScrollArea page;
    ReportTable* table;
};

TEST(DataTable, IsSortedByMouseKeyboardAndAssistiveTechnology) {
    LongTable shown;
    ReportTable& table = *shown.table;
    const QPoint tokens = table.headerCell(1).center().toPoint();
    QTest::mouseClick(&table, Qt::LeftButton, {}, tokens);
    EXPECT_EQ(shown.first(), "row 006");
    EXPECT_EQ(table.markValue(1), "largest first");
    EXPECT_EQ(table.markValue(0), QString());
    QTest::mouseClick(&table, Qt::LeftButton, {}, tokens);
    EXPECT_EQ(shown.first(), "row 000");
    table.setActive(table.places().shown()[1]);
    QTest::keyClick(&table, Qt::Key_Up);
    EXPECT_EQ(table.active(), Item(0));
    QTest::keyClick(&table, Qt::Key_Up); // on to the title that the rows are sorted by
    EXPECT_EQ(table.currentMark(), 1);
    QTest::keyClick(&table, Qt::Key_Left);
    EXPECT_EQ(table.currentMark(), 0);
    EXPECT_EQ(table.active(), Item());
    QTest::keyClick(&table, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Space);
    EXPECT_EQ(shown.first(), "row 199");
    const ReportTable next({"Name", {"Tokens"}, {}}, table.rows(), "Long");
    EXPECT_EQ(next.arrangement().sort(), (TableSort{0, true})) << "kept for the next report";
    QAccessibleInterface* title = QAccessible::queryAccessibleInterface(&table)->child(0);
    EXPECT_EQ(title->text(QAccessible::Value), "from Z to A");
    title->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(shown.first(), "row 000") << "as given";
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(table.active(), Item(0));
}

TEST(DataTable, KeepsItsTitlesInView) {
    LongTable shown;
    auto* titles = shown.table->findChild<TableHeader*>();
    ASSERT_NE(titles, nullptr);
    EXPECT_FALSE(titles->isVisible());
    shown.page.verticalScrollBar()->setValue(500);
    EXPECT_TRUE(titles->isVisible());
    EXPECT_EQ(titles->mapTo(shown.page.viewport(), QPoint()).y(), 0);
    QTest::mouseClick(titles, Qt::LeftButton, {}, shown.table->headerCell(1).center().toPoint());
    EXPECT_EQ(shown.first(), "row 006");
    QTest::keyClick(shown.table, Qt::Key_Home);
    for (int step = 0; step < 40; ++step)
        QTest::keyClick(shown.table, Qt::Key_Down);
    for (int step = 0; step < 20; ++step)
        QTest::keyClick(shown.table, Qt::Key_Up);
    const QRect row = shown.table->rowArea(*shown.table->active());
    EXPECT_TRUE(titles->isVisible());
    EXPECT_GE(row.top(), titles->geometry().bottom()) << "the row that was walked to is below them";
    shown.page.verticalScrollBar()->setValue(0);
    EXPECT_FALSE(titles->isVisible());
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
