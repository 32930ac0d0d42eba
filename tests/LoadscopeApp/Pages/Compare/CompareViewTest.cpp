// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CompareView.h"

#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Charts/BarChart.h"
#include "LoadscopeApp/Charts/ChartLegend.h"
#include "LoadscopeApp/Charts/ChartTip.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Compare/CategoryTable.h"
#include "LoadscopeApp/Pages/Compare/ChoiceCard.h"
#include "LoadscopeApp/Pages/Compare/ColumnCard.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/Support/HistoryRecords.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

using History = std::vector<RecordedScan>;

History two() {
    return {record(1, "web", day(1), 45'000, {{"System tools", 20'000}, {"Skills", 10}}),
            record(2, "api", day(2), 88'910, {{"System tools", 40'000}, {"MCP tools", 9'000}})};
}

History many(int repositories) {
    History history;
    for (int number = 1; number <= repositories; ++number)
        history.push_back(
            record(number, "r" + std::to_string(number), day(number), number, {{"System tools", number}}));
    return history;
}

void show(CompareView& view, const History& history, int width = 900) {
    view.refresh(history);
    view.resize(width, 1'200);
    view.show();
    QApplication::processEvents();
}

TEST(CompareView, SaysWhatThereIsToCompare) {
    History sameName{record(1, "web", day(1), 10), record(2, "web", day(2), 20)};
    sameName[1].repositoryPath = "/other/web";
    struct Case {
        const char* name;
        History history;
        QStringList said;
        int rows;
        int columns;
    };
    const QString codexNote =
        " Codex reports a total and a context window, not a breakdown, so no categories "
        "are shown for it.";
    const std::vector<Case> cases{
        {"nothing",
         {},
         {"Compare",
          "The latest recorded Claude Code scan of each repository, side by side, category for category." +
              codexNote,
          "No recorded scans yet", "Scan two repositories and their latest results appear here side by side.",
          "How to read this"},
         0,
         0},
        {"only Codex",
         {record(1, "web", day(1), 10, {}, RecordedScan::codexTool)},
         {"No recorded scans yet",
          "1. web, Codex · 1 scan · latest Jan 1, 2026, 10 tokens, Lean, First scan"},
         1,
         0},
        {"one repository",
         {two()[0]},
         {"Only one repository recorded",
          "web measured 45,000 tokens. Choose a second repository and scan it to compare the two."},
         1,
         0},
        {"two",
         two(),
         {"Leaderboard",
          "Every scanned repository, ranked by its latest recorded total — heaviest first, one ranking per "
          "tool. The trend compares each repository's two most recent scans by that tool.",
          "1. api, Claude Code · 1 scan · latest Jan 2, 2026, 88,910 tokens, Excessive, First scan",
          "Scanned Jan 1, 2026", "45,000", "Heavy · 30,000–60,000", "System tools: 20,000 tokens",
          "Category for category",
          "Same categories, every recorded repository, on one axis. Totals are authoritative and the "
          "category "
          "totals are reported by Claude Code's `/context`." +
              codexNote,
          "api · MCP tools: 9,000 tokens", "api, web"},
         2,
         2},
        {"equal names", sameName, {"web — /src/web", "web — /other/web"}, 2, 2},
        {"forty", many(40), {"Repositories 1 to 12 of 40"}, 40, 12},
    };
    for (const Case& testCase : cases) {
        CompareView view;
        show(view, testCase.history);
        EXPECT_EQ(view.findChildren<RowButton*>().size(), testCase.rows) << testCase.name;
        EXPECT_EQ(view.findChildren<ColumnCard*>().size(), testCase.columns) << testCase.name;
        for (const QString& text : testCase.said)
            EXPECT_TRUE(spoken(view).contains(text)) << testCase.name << ": " << text.toStdString();
    }
}

TEST(CompareView, LetsTheUserLeaveSomeOutAndTurnThePages) {
    CompareView view;
    const std::vector<RecordedScan> history = many(14);
    show(view, history);
    const auto names = [&] {
        QApplication::processEvents();
        QStringList shown;
        for (auto* card : view.findChildren<ColumnCard*>())
            shown.append(card->copyableText().section('\n', 0, 0));
        return shown;
    };
    const auto press = [&](const QString& text) {
        for (auto* button : view.findChildren<QAbstractButton*>())
            if (button->isVisible() && button->text() == text)
                return button->click(); // others go with the page
    };
    const QStringList first = names();
    EXPECT_EQ(first.size(), 12);
    press("Next");
    EXPECT_EQ(names().size(), 2);
    EXPECT_TRUE(spoken(view).contains("Repositories 13 to 14 of 14"));
    press("Next"); // there is none
    EXPECT_EQ(names().size(), 2);

    view.findChild<ChoiceCard*>()->setExpanded(true);
    QApplication::processEvents();
    auto boxes = view.findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), 14);
    boxes[0]->setFocus();
    QTest::keyClick(boxes[0], Qt::Key_Space);
    EXPECT_EQ(names().size(), 12) << "the first page";
    EXPECT_FALSE(names().contains(first[0]));
    EXPECT_TRUE(boxes[0]->hasFocus()) << "and stays where the keyboard is";
    EXPECT_TRUE(spoken(view).contains("13 of 14 repositories are compared."));
    press("Leave All Out");
    EXPECT_EQ(names(), QStringList());
    EXPECT_TRUE(spoken(view).contains("Fewer than two repositories are chosen"));
    for (auto* box : {boxes[3], boxes[5]})
        QTest::keyClick(box, Qt::Key_Space);
    EXPECT_EQ(names(), (QStringList{first[3], first[5]}));

    std::vector<RecordedScan> more = many(15);
    view.refresh(more);
    EXPECT_EQ(names().size(), 3) << "the new one, and the choice is kept";
    EXPECT_EQ(view.findChildren<QCheckBox*>().size(), 15);
    press("Compare All");
    EXPECT_EQ(names().size(), 12);
}

TEST(CompareView, SetsColumnsSideBySideOnlyWhereTheyFit) {
    struct Case {
        int repositories;
        int width;
        int inRow;
    };
    for (const Case& testCase : std::vector<Case>{{2, 900, 2},
                                                  {3, 900, 3},
                                                  {2, 460, 1},
                                                  {4, 930, 4},
                                                  {4, 800, 3},
                                                  {5, 600, 2},
                                                  {4, 400, 1},
                                                  {40, 1'100, 3}}) {
        CompareView view;
        show(view, many(testCase.repositories), testCase.width);
        const QList<ColumnCard*> cards = view.findChildren<ColumnCard*>();
        const auto isInFirstRow = [&](const ColumnCard* card) { return card->y() == cards[0]->y(); };
        EXPECT_EQ(std::count_if(cards.begin(), cards.end(), isInFirstRow), testCase.inRow)
            << testCase.repositories << " in " << testCase.width;
        for (qsizetype i = 1; i < cards.size(); ++i) {
            EXPECT_FALSE(cards[i]->geometry().intersects(cards[i - 1]->geometry()));
            if (cards[i]->y() == cards[i - 1]->y()) {
                EXPECT_EQ(cards[i]->height(), cards[i - 1]->height());
            }
        }
        EXPECT_LE(cards.last()->geometry().right(), testCase.width);
        const auto* legend = view.findChild<ChartLegend*>();
        if (testCase.repositories > 5) {
            EXPECT_EQ(legend->entries()[5].paletteIndex, 0U);
        }
    }
}

TEST(CompareView, BreaksPillsAndStacksColumnsBeforeItCutsThem) {
    History history = two();
    history.push_back(record(3, "tokens", day(3), 12'000));
    for (RecordedScan& scan : history)
        scan.contextWindow = 200'000;
    CompareView view;
    show(view, history, 930);
    QList<Pill*> pills;
    for (auto* card : view.findChildren<ColumnCard*>())
        pills += card->findChildren<Pill*>();
    ASSERT_EQ(pills.size(), 3);
    const QString cut = "Excessive · 44.5% of its 200K window.";
    ASSERT_EQ(pills[0]->look().text, cut);
    EXPECT_LT(pills[0]->width(), pills[0]->sizeHint().width());
    for (const Pill* pill : pills) {
        EXPECT_GT(pill->height(), pill->sizeHint().height()) << "two lines, in every column";
        EXPECT_EQ(pill->y(), pills[0]->y());
    }
    history[0].total = 1'000'000'000'000'000;
    show(view, history, 930);
    const QList<ColumnCard*> cards = view.findChildren<ColumnCard*>();
    EXPECT_GT(cards[1]->y(), cards[0]->y()) << "a number is never cut";
}

TEST(CompareView, LetsTheTextsOfAColumnBeCopiedOneByOneAndTogether) {
    CompareView view;
    show(view, two());
    view.activateWindow();
    auto* card = view.findChildren<ColumnCard*>().at(0);
    QWidget* label = card->findChild<ElidedLabel*>();
    QWidget* pill = card->findChild<Pill*>();
    const auto copied = [](QWidget* from) {
        QGuiApplication::clipboard()->clear();
        QTest::keySequence(from, QKeySequence::Copy);
        return QGuiApplication::clipboard()->text();
    };
    const QString all = "api\nScanned Jan 2, 2026\n88,910 tokens\nExcessive · over 60,000\n\n"
                        "System tools\t40,000\nMCP tools\t9,000";
    EXPECT_EQ(copied(card), all);
    for (const auto& [widget, text] :
         {std::pair{label, QString("api")}, {pill, QString("Excessive · over 60,000")}}) {
        const QImage before = widget->grab().toImage();
        EXPECT_EQ(copied(widget), all) << "nothing is selected: the card copies";
        QTest::mousePress(widget, Qt::LeftButton, {}, {4, 4});
        EXPECT_EQ(copied(widget), text);
        EXPECT_NE(widget->grab().toImage(), before);
        card->setFocus();
        EXPECT_EQ(widget->grab().toImage(), before) << "selected no more";
    }
    EXPECT_TRUE(card->focusPolicy() & Qt::TabFocus);
}

TEST(CompareView, OpensTheRepositoryOfARow) {
    CompareView view;
    show(view, two());
    std::string opened;
    QObject::connect(&view, &CompareView::repositoryRequested,
                     [&](const std::string& path) { opened = path; });
    auto* row = view.findChildren<RowButton*>().at(1);
    QTest::mouseClick(row->findChild<QWidget*>(), Qt::LeftButton);
    EXPECT_EQ(opened, "/src/web");
    opened.clear();
    QTest::keyClick(view.findChildren<RowButton*>().at(0), Qt::Key_Return);
    EXPECT_EQ(opened, "/src/api");
}

TEST(BarChart, WalksItsBarsSlotBySlot) {
    BarChart chart(BarChart::Kind::grouped, {{"One", "Two"}, {{{0, 5}, {1, 6}}, {{1, 7}}}, 10},
                   {{"a", 0}, {"b", 1}});
    chart.resize(400, 200);
    chart.show();
    chart.setFocus();
    struct Case {
        Qt::Key key;
        QString text;
    };
    const std::vector<Case> cases{{Qt::Key_Down, "a · One: 5 tokens"}, {Qt::Key_Down, "a · Two: 6 tokens"},
                                  {Qt::Key_Down, "b · Two: 7 tokens"}, {Qt::Key_Down, "b · Two: 7 tokens"},
                                  {Qt::Key_Home, "a · One: 5 tokens"}, {Qt::Key_Up, "a · One: 5 tokens"}};
    for (const Case& testCase : cases) {
        QTest::keyClick(&chart, testCase.key);
        EXPECT_EQ(chart.markText(chart.currentMark()), testCase.text);
        const auto* tip = chart.findChild<ChartTip*>();
        EXPECT_EQ(tip->title() + ": " + tip->detail(), testCase.text);
        EXPECT_TRUE(chart.rect().contains(tip->geometry()));
    }
}

TEST(CategoryTable, CopiesTheSelectedLinesOrAll) {
    CategoryTable table({{"System tools", "1,000"}, {"Skills", "20"}, {"<i>", "3"}});
    table.resize(300, table.sizeHint().height());
    table.show();
    EXPECT_EQ(table.selectedText(), QStringLiteral("System tools\t1,000\nSkills\t20\n<i>\t3"));
    QTest::mousePress(&table, Qt::LeftButton, {}, table.markArea(1).center());
    EXPECT_EQ(table.selectedText(), QStringLiteral("Skills\t20"));
}

} // namespace
} // namespace loadscope::testing
