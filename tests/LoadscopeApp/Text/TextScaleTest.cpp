// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// A page that is on screen while the text scale changes is what one made afterwards would be: nothing that
// was measured before is kept.
#include "LoadscopeApp/Pages/Compare/CompareView.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Text/TextWidths.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QFontMetricsF>
#include <QLayout>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace loadscope::testing {
namespace {

std::unique_ptr<QWidget> makeReport() {
    ProbeResult probe = sampleResult(95'000);
    auto page =
        std::make_unique<OverviewReport>(std::make_shared<const ScanReport>(reportOf(probe, sampleFiles())));
    for (auto* section : page->findChildren<CollapsibleSection*>())
        section->setExpanded(true);
    return page;
}

std::unique_ptr<QWidget> makeCompare() {
    auto page = std::make_unique<CompareView>();
    std::vector<RecordedScan> history;
    for (int number = 1; number <= 3; ++number) {
        history.push_back(record(number, "repository-" + std::to_string(number), day(number), 40'000,
                                 {{"System tools", 20'000}, {"A category of many words", 1'000}}));
        history.back().contextWindow = 200'000;
    }
    page->refresh(history);
    return page;
}

void show(QWidget& page) {
    page.resize(930, 1'600);
    page.show();
    ReportPage::settle();
}

/// What each widget of the page measures, in their order.
QStringList measures(const QWidget& page) {
    QStringList all;
    for (const auto* widget : page.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&page)) continue;
        const QSize hint = widget->sizeHint();
        // The least height of what only holds others says nothing: it follows from the width.
        const QSize least = widget->layout() == nullptr ? widget->minimumSizeHint() : QSize();
        all.append(QStringLiteral("%1 \"%2\": %3x%4, hint %5x%6, least %7x%8, %9 high")
                       .arg(widget->metaObject()->className(), widget->accessibleName().left(40))
                       .arg(widget->width())
                       .arg(widget->height())
                       .arg(hint.width())
                       .arg(hint.height())
                       .arg(least.width())
                       .arg(least.height())
                       .arg(widget->heightForWidth(180)));
    }
    return all;
}

TEST(TextScale, LeavesNothingThatWasMeasuredBefore) {
    for (const auto& make : {makeReport, makeCompare}) {
        const std::unique_ptr<QWidget> living = make();
        show(*living);
        const QStringList usual = measures(*living);
        for (const double scale : {1.6, 1.0}) {
            SCOPED_TRACE(scale);
            AppTheme::current().setTextScale(scale);
            ReportPage::settle();
            const std::unique_ptr<QWidget> fresh = make();
            show(*fresh);
            const QStringList expected = measures(*fresh);
            const QStringList measured = measures(*living);
            ASSERT_EQ(measured.size(), expected.size());
            for (int index = 0; index < measured.size(); ++index)
                EXPECT_EQ(measured[index].toStdString(), expected[index].toStdString());
            EXPECT_EQ(measured == usual, scale == 1.0);
            for (const auto* label : living->findChildren<TextLabel*>())
                EXPECT_EQ(TextWidths::of(label->text(), label->font()),
                          QFontMetricsF(label->font()).horizontalAdvance(label->text()));
        }
    }
}

TEST(TextWidths, KnowATextInEachOfItsFonts) {
    for (const TextStyle style : {TextStyle::caption, TextStyle::title, TextStyle::caption}) {
        const QFont font = AppTheme::current().font(style);
        EXPECT_EQ(TextWidths::of("Heavy", font), QFontMetricsF(font).horizontalAdvance("Heavy"));
    }
}

} // namespace
} // namespace loadscope::testing
