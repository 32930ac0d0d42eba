// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/BreakdownSection.h"

#include "LoadscopeApp/Cards/AdaptivePair.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectionLine.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace loadscope {
namespace {

constexpr AdaptivePair::Rule ringBesideTable{680, 32, 16, 0, false, false};

TextLabel* note(const QString& text, TextStyle style) {
    auto* label = new TextLabel(text, style, ThemeColor::secondaryText);
    label->setWraps();
    return label;
}

QString percent(double share) { return DisplayText::own(LocaleFormat::oneDecimal(share * 100) + "%"); }

std::vector<TableRow> tableRows(const ScanReport& report) {
    std::vector<TableRow> rows;
    rows.reserve(report.rows.size());
    for (const SlabAttribution& row : report.rows) {
        rows.push_back(
            {rows.size(),
             DisplayText::line(row.name),
             {},
             {DisplayText::own(LocaleFormat::grouped(row.tokens)), percent(report.categoryShare(row)),
              DisplayText::own(ScanPresentation::sourceLabel(report, row.provenance))}});
    }
    return rows;
}

/// The ring over the line that tells what is selected in it.
class RingColumn : public QWidget {
public:
    RingColumn(const ScanReport& report, const std::vector<TableRow>& rows)
        : donut(
              new DonutChart(sectors(report, rows), DisplayText::own(LocaleFormat::grouped(report.total)))) {
        auto* line = new SelectionLine;
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 8, 0, 0);
        column->setSpacing(12);
        column->addWidget(donut, 0, Qt::AlignHCenter);
        column->addWidget(line);
        std::vector<SelectionLine::Selected> texts;
        texts.reserve(rows.size());
        for (const TableRow& row : rows)
            texts.push_back({texts.size(), row.name, row.cells[1]});
        connect(donut, &DonutChart::activeChanged, line, [line, texts](DonutChart::Item row) {
            line->select(row ? std::optional(texts.at(*row)) : std::nullopt);
        });
    }

    DonutChart* donut;

private:
    static std::vector<DonutChart::Row> sectors(const ScanReport& report, const std::vector<TableRow>& rows) {
        std::vector<DonutChart::Row> result;
        result.reserve(rows.size());
        for (const TableRow& row : rows)
            result.push_back({row.name, report.rows[result.size()].tokens,
                              row.cells[0] + QStringLiteral(" tokens, ") + row.cells[1]});
        return result;
    }
};

bool hasTokens(const ScanReport& report) {
    return std::any_of(report.rows.begin(), report.rows.end(),
                       [](const auto& row) { return row.tokens > 0; });
}

} // namespace

BreakdownSection::BreakdownSection(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    content()->addWidget(new SectionHeader(
        QStringLiteral("Breakdown by category"),
        QStringLiteral("Category rows come from Claude Code's `/context` report; shares use the %1 total.")
            .arg(report.conditions.isEstimate ? QStringLiteral("estimated")
                                              : QStringLiteral("Claude-reported"))));
    if (report.rows.empty())
        content()->addWidget(
            note(QStringLiteral("This session did not report category rows."), TextStyle::body));
    else
        addRows(report);
    addNotes(report);
}

void BreakdownSection::addRows(const ScanReport& report) {
    std::vector<TableRow> rows = tableRows(report);
    RingColumn* ring = hasTokens(report) ? new RingColumn(report, rows) : nullptr;
    auto* table = new ReportTable({QStringLiteral("Category"),
                                   {QStringLiteral("Tokens"), QStringLiteral("Share")},
                                   QStringLiteral("Source")},
                                  std::move(rows), QStringLiteral("Rows by category"));
    if (ring == nullptr) {
        content()->addWidget(
            note(QStringLiteral("The attributed category rows report no tokens to chart."), TextStyle::body));
        content()->addWidget(table);
        return;
    }
    auto* body = new QWidget;
    auto* pair = new AdaptivePair(body, ringBesideTable);
    pair->addWidget(ring);
    pair->addWidget(table);
    content()->addWidget(body);
    // A row without a sector clears the ring, which must not clear the row in turn.
    const auto tableLeads = std::make_shared<bool>(false);
    connect(ring->donut, &DonutChart::activeChanged, table, [table, tableLeads](DonutChart::Item row) {
        if (!*tableLeads) table->setActive(row);
    });
    connect(table, &ReportTable::activeChanged, ring->donut,
            [donut = ring->donut, tableLeads](ReportTable::Item row) {
                const QScopedValueRollback leads(*tableLeads, true);
                donut->showRow(row);
            });
}

void BreakdownSection::addNotes(const ScanReport& report) {
    if (!report.categoriesSelfReported) {
        content()->addWidget(
            note(QStringLiteral(
                     "Claude Code's `/context` reported no categories for this session. The total and band "
                     "remain factual; instruction files are listed separately as local estimates."),
                 TextStyle::caption));
    }
    if (const auto text = ScanPresentation::unreadableFilesNote(report))
        content()->addWidget(new NoteLabel(DisplayText::own(*text)));
    if (const auto text = ScanPresentation::overAttributionNote(report))
        content()->addWidget(note(DisplayText::own(*text), TextStyle::caption));
}

} // namespace loadscope
