// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/BreakdownSection.h"

#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Pages/Report/BreakdownRows.h"
#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectionLine.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace loadscope {
namespace {

constexpr AdaptiveLayout::Rule ringBesideTable{.widths = AdaptiveLayout::Widths::firstAsItAsks,
                                               .spacing = 32,
                                               .stackedSpacing = 16,
                                               .sideBySideFrom = 680,
                                               .equalHeights = false};

/// The ring over the line that tells what is selected in it.
class RingColumn : public QWidget {
public:
    RingColumn(const ScanReport& report, const BreakdownRows& rows)
        : donut(new DonutChart(sectors(report, rows), DisplayText::own(LocaleFormat::grouped(report.total)),
                               rows.rows.size() > report.rows.size())) {
        auto* line = new SelectionLine;
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 8, 0, 0);
        column->setSpacing(12);
        column->addWidget(donut, 0, Qt::AlignHCenter);
        column->addWidget(line);
        std::vector<SelectionLine::Selected> texts;
        for (const std::size_t row : rows.tops)
            texts.push_back({texts.size(), rows.rows[row].name, rows.rows[row].cells[1]});
        connect(donut, &DonutChart::activeChanged, line, [line, texts](DonutChart::Item category) {
            line->select(category ? std::optional(texts.at(*category)) : std::nullopt);
        });
    }

    DonutChart* donut;

private:
    static std::vector<DonutChart::Row> sectors(const ScanReport& report, const BreakdownRows& rows) {
        std::vector<DonutChart::Row> result;
        for (const std::size_t top : rows.tops) {
            const TableRow& row = rows.rows[top];
            result.push_back({row.name, report.rows[result.size()].tokens,
                              DisplayText::own(TokenTexts::withShare(row.cells[0].toStdString(),
                                                                     row.cells[1].toStdString()))});
        }
        return result;
    }
};

/// What the outer ring shows of each category while it is open.
std::vector<std::vector<std::int64_t>> partsOf(const CategoryMembers& members) {
    std::vector<std::vector<std::int64_t>> parts;
    for (const MemberList& list : members.rows())
        parts.push_back(DetailsPresentation::ringTokens(list));
    return parts;
}

bool hasTokens(const ScanReport& report) {
    return std::any_of(report.rows.begin(), report.rows.end(),
                       [](const auto& row) { return row.tokens > 0; });
}

} // namespace

BreakdownSection::BreakdownSection(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    const CategoryMembers members(report);
    content()->addWidget(new SectionHeader(QStringLiteral("Breakdown by category"),
                                           DisplayText::own(ScanPresentation::breakdownDetail(report))));
    if (report.rows.empty())
        content()->addWidget(
            TextLabel::note(QStringLiteral("This session did not report category rows."), TextStyle::body));
    else
        addRows(report, members);
    addBesides(report, members);
    addNotes(report);
}

void BreakdownSection::addRows(const ScanReport& report, const CategoryMembers& members) {
    auto rows = std::make_shared<BreakdownRows>(BreakdownRows::loaded(report, members));
    RingColumn* ring = hasTokens(report) ? new RingColumn(report, *rows) : nullptr;
    auto* table = new ReportTable({QStringLiteral("Category"),
                                   {QStringLiteral("Tokens"), QStringLiteral("Share")},
                                   QStringLiteral("Source")},
                                  rows->rows, QStringLiteral("Rows by category"));
    rows->rows.clear(); // the table has its own
    table_ = table;
    table->setPaths([rows](std::size_t row) { return rows->paths.at(row); });
    if (ring == nullptr) {
        content()->addWidget(TextLabel::note(
            QStringLiteral("The attributed category rows report no tokens to chart."), TextStyle::body));
        content()->addWidget(table);
        return;
    }
    auto* body = new QWidget;
    auto* pair = new AdaptiveLayout(ringBesideTable, body);
    pair->addWidget(ring);
    pair->addWidget(table);
    content()->addWidget(body);
    connectRing(ring->donut, table, rows);
    connect(table, &ReportTable::openChanged, ring->donut,
            [donut = ring->donut, rows, parts = partsOf(members)](std::size_t row, bool isOpen) {
                const std::size_t category = rows->categories.at(row);
                if (rows->tops.at(category) == row)
                    donut->showParts(category, isOpen ? parts.at(category) : std::vector<std::int64_t>());
            });
}

void BreakdownSection::connectRing(DonutChart* donut, ReportTable* table,
                                   const std::shared_ptr<BreakdownRows>& rows) {
    // A row without a sector clears the ring, which must not clear the row in turn.
    const auto tableLeads = std::make_shared<bool>(false);
    connect(donut, &DonutChart::activeChanged, table, [table, tableLeads, rows](DonutChart::Item category) {
        if (!*tableLeads)
            table->setActive(category ? ReportTable::Item(rows->tops.at(*category)) : std::nullopt);
    });
    connect(table, &ReportTable::activeChanged, donut, [donut, tableLeads, rows](ReportTable::Item row) {
        const QScopedValueRollback leads(*tableLeads, true);
        donut->showRow(row ? DonutChart::Item(rows->categories.at(*row)) : std::nullopt);
    });
}

void BreakdownSection::addBesides(const ScanReport& report, const CategoryMembers& members) {
    if (const auto line = DetailsPresentation::onDemandLine(report))
        content()->addWidget(TextLabel::note(DisplayText::line(*line), TextStyle::body));
    if (const auto line = DetailsPresentation::spaceLine(report))
        content()->addWidget(TextLabel::note(DisplayText::line(*line)));
    BreakdownRows rows = BreakdownRows::besides(report, members);
    if (rows.rows.empty()) return;
    auto* table = new ReportTable({QStringLiteral("Listed besides"),
                                   {QStringLiteral("Tokens"), QStringLiteral("Share")},
                                   QStringLiteral("Source")},
                                  std::move(rows.rows), QStringLiteral("Listed by the tool, not counted"));
    table->setPaths([paths = std::move(rows.paths)](std::size_t row) { return paths.at(row); });
    content()->addWidget(table);
}

void BreakdownSection::addNotes(const ScanReport& report) {
    if (!report.categoriesSelfReported) {
        content()->addWidget(TextLabel::note(QStringLiteral(
            "Claude Code's `/context` reported no categories for this session. The total and band "
            "remain factual; instruction files are listed separately as local estimates.")));
    }
    if (const auto text = ScanPresentation::unreadableFilesNote(report))
        content()->addWidget(new NoteLabel(DisplayText::own(*text)));
    if (const auto text = ScanPresentation::overAttributionNote(report))
        content()->addWidget(TextLabel::note(DisplayText::own(*text)));
}

} // namespace loadscope
