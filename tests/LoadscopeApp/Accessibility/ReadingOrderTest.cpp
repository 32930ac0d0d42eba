// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// Assistive technologies and Tab go through each page in the order in which it stands on screen, and say
// nothing twice.
#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "tests/LoadscopeApp/Support/SampleReports.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QScrollBar>

#include <functional>

namespace loadscope::testing {
namespace {

/// Whether what is read as `second` stands before what is read as `first`: above it, unless it is beside it
/// as the next column is, or on the same lines and further to the left.
bool standsBefore(const QRect& second, const QRect& first) {
    if (first.isEmpty() || second.isEmpty()) return false;
    const bool isAbove = second.bottom() < first.top();
    const bool isBelow = second.top() > first.bottom();
    const bool isLeft = second.right() < first.left();
    const bool isRight = second.left() > first.right();
    return (isAbove && !isRight) || (isLeft && !isBelow);
}

QString nameOf(QObject* object) {
    auto* element = QAccessible::queryAccessibleInterface(object);
    return QString(object->metaObject()->className()) + " \"" + element->text(QAccessible::Name) + '"';
}

/// The elements of the tree that are widgets must follow each other as they stand on screen.
void expectReadInOrder(QAccessibleInterface* element) {
    std::vector<QAccessibleInterface*> children;
    for (int index = 0; index < element->childCount(); ++index) {
        QAccessibleInterface* child = element->child(index);
        auto* widget = child != nullptr ? qobject_cast<QWidget*>(child->object()) : nullptr;
        if (widget == nullptr || !widget->isVisible() || child->role() == QAccessible::Graphic) continue;
        if (qobject_cast<QScrollBar*>(widget) != nullptr) continue;
        children.push_back(child);
    }
    for (std::size_t later = 1; later < children.size(); ++later)
        for (std::size_t earlier = 0; earlier < later; ++earlier)
            EXPECT_FALSE(standsBefore(children[later]->rect(), children[earlier]->rect()))
                << nameOf(children[later]->object()).toStdString() << " is read after "
                << nameOf(children[earlier]->object()).toStdString();
    for (QAccessibleInterface* child : children)
        expectReadInOrder(child);
}

QRect onScreen(const QWidget& widget) { return {widget.mapToGlobal(QPoint(0, 0)), widget.size()}; }

/// The two widgets beside each other in which these lie.
std::pair<QWidget*, QWidget*> siblings(QWidget* first, QWidget* second) {
    for (QWidget* left = first; left != nullptr; left = left->parentWidget())
        for (QWidget* right = second; right != nullptr; right = right->parentWidget())
            if (left->parentWidget() == right->parentWidget()) return {left, right};
    return {first, second};
}

void expectWalkedInOrder(QWidget& window) {
    std::vector<QWidget*> stops;
    for (QWidget* widget = window.nextInFocusChain(); widget != &window; widget = widget->nextInFocusChain())
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled())
            stops.push_back(widget);
    ASSERT_GT(stops.size(), 4U);
    for (std::size_t index = 1; index < stops.size(); ++index) {
        const auto [first, second] = siblings(stops[index - 1], stops[index]);
        EXPECT_FALSE(standsBefore(onScreen(*second), onScreen(*first)))
            << "Tab goes from " << nameOf(stops[index - 1]).toStdString() << " to "
            << nameOf(stops[index]).toStdString();
    }
}

std::vector<RecordedScan> history() {
    return {record(1, "web", day(1), 30'000, {{"System tools", 3'100}}),
            record(2, "api", day(2), 88'000, {{"System tools", 9'100}}),
            record(3, "web", day(3), 58'000, {{"System tools", 4'100}})};
}

TEST(ReadingOrder, IsThatOfTheScreenOnEveryPageAlsoWhenItWasMadeAnew) {
    struct Case {
        const char* name;
        AppPage page;
        FakeProbe::Answer answer;
    };
    const std::vector<Case> cases{{"report", AppPage::overview, sampleResult()},
                                  {"failure", AppPage::overview, ProbeError(ProbeError::TimedOut{})},
                                  {"scan under way", AppPage::overview, FakeProbe::Hang{}},
                                  {"trends", AppPage::trends, sampleResult()},
                                  {"compare", AppPage::compare, sampleResult()}};
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        Window window({.history = history()});
        window.tools.instructions->files = sampleFiles();
        window.show();
        window.view.resize(1'180, 780);
        window.view.setPage(testCase.page);
        window.choose();
        window.tools.probe->answer(testCase.answer);
        window.view.startScan(); // the history changes, so that the pages are made anew
        const bool hangs = std::holds_alternative<FakeProbe::Hang>(testCase.answer);
        ASSERT_TRUE(eventually([&] { return hangs || !window.model.isScanTaskRunning(); }));
        window.view.setPage(testCase.page);
        for (auto* section : window.view.findChildren<CollapsibleSection*>())
            section->setExpanded(true);
        for (int round = 0; round < 6; ++round)
            QApplication::processEvents();
        expectReadInOrder(QAccessible::queryAccessibleInterface(&window.view));
        expectWalkedInOrder(window.view);
        window.model.cancel();
        EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
    }
}

TEST(Spoken, TellsRowsAndEmptyStatesOnceAndTheDetailOfAClosedSection) {
    Window window({.history = history()});
    window.show();
    QStringList said = spoken(window.view);
    EXPECT_EQ(said.count("Start a context scan"), 1);
    EXPECT_EQ(said.count("Setup help"), 1);
    window.view.setPage(AppPage::trends);
    said = spoken(window.view);
    EXPECT_EQ(said.count("How to read this"), 1);
    EXPECT_EQ(said.count("These bands are this app's opinion, not an industry standard."), 1);
    for (const AppPage page : {AppPage::trends, AppPage::compare}) {
        window.view.setPage(page);
        for (auto* row : window.view.findChildren<RowButton*>())
            EXPECT_EQ(QAccessible::queryAccessibleInterface(row)->childCount(), 0);
    }
    EXPECT_TRUE(spoken(window.view)
                    .contains("1. api, Claude Code · 1 scan · latest Jan 2, 2026, 88,000 tokens, Excessive, "
                              "First scan"));
}

} // namespace
} // namespace loadscope::testing
