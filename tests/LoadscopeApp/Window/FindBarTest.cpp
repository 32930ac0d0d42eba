// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/FindBar.h"
#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Report/FileInventory.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace loadscope::testing {
namespace {

class SearchedWindow : public Window {
public:
    explicit SearchedWindow(const Options& options = {}) : Window(options) {
        show();
        view.activateWindow();
        bar = view.findChild<FindBar*>();
        field = bar->findChild<QLineEdit*>();
    }
    void find(const QString& text) {
        QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
        EXPECT_TRUE(field->hasFocus());
        QTest::keyClicks(field, text);
        ReportPage::settle();
    }
    [[nodiscard]] QString told() const {
        for (auto* label : bar->findChildren<QLabel*>())
            if (label->isVisible()) return label->text();
        return {};
    }

    FindBar* bar = nullptr;
    QLineEdit* field = nullptr;
};

TEST(FindBar, FiltersTheOpenListsOfAReportAndTakesInThoseThatOpen) {
    SearchedWindow window;
    window.tools.instructions->files = sampleFiles();
    window.choose();
    window.tools.probe->answer(sampleResult());
    window.view.startScan();
    ASSERT_TRUE(eventually([&] { return window.view.findChild<ReportTable*>() != nullptr; }));
    ReportPage::settle();
    auto* categories = window.view.findChild<ReportTable*>();
    categories->setFocus();
    const std::size_t all = categories->places().shown().size();
    const QString name = categories->rows()[1].name;
    window.find(name.toUpper());
    EXPECT_EQ(categories->places().shown(), std::vector<std::size_t>{1});
    EXPECT_EQ(window.told(), QString("1 of %1 rows").arg(categories->rows().size()));
    QTest::keyClick(window.field, Qt::Key_Return);
    EXPECT_TRUE(categories->hasFocus());
    EXPECT_EQ(categories->active(), MarkedWidget::Item(1));

    for (auto* section : window.view.findChildren<CollapsibleSection*>())
        section->setExpanded(true);
    ReportPage::settle();
    auto* files = window.view.findChild<FileInventory*>();
    ASSERT_NE(files, nullptr);
    EXPECT_TRUE(files->places().shown().empty()) << "it was opened while something was looked for";

    window.find("no row is called so");
    EXPECT_EQ(window.told(), "No name has this in it.");
    EXPECT_TRUE(categories->places().shown().empty());
    QTest::keyClick(window.field, Qt::Key_Escape);
    EXPECT_FALSE(window.bar->isVisible());
    EXPECT_EQ(categories->places().shown().size(), all);
    EXPECT_TRUE(categories->hasFocus()) << "where it was before";
}

TEST(FindBar, FiltersThePreviousRunsAndEndsWithThePage) {
    SearchedWindow window({.history = {record(1, "web-app", day(1), 30'000), record(2, "api", day(2), 9'000),
                                       record(3, "web-site", day(3), 8'000)}});
    window.view.setPage(AppPage::trends);
    ReportPage::settle();
    const auto shown = [&] {
        QStringList names;
        for (auto* row : window.view.findChildren<RowButton*>())
            if (row->isVisible()) names.append(row->subject().name);
        return names.join(' ');
    };
    EXPECT_EQ(shown(), "web-site api web-app");
    window.find("WEB");
    EXPECT_EQ(shown(), "web-site web-app");
    EXPECT_EQ(window.told(), "2 of 3 rows");
    QTest::keyClick(window.field, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName().section(',', 0, 0), "web-site");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window.bar->isVisible());
    EXPECT_EQ(shown(), "web-site api web-app");
    window.find("api");
    window.view.setPage(AppPage::compare);
    EXPECT_FALSE(window.bar->isVisible());
    window.view.setPage(AppPage::trends);
    EXPECT_EQ(shown(), "web-site api web-app");
    window.view.setPage(AppPage::overview);
    window.find("x");
    EXPECT_EQ(window.told(), "No list is open here.");
}

} // namespace
} // namespace loadscope::testing
