// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanHtml.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/Version.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace loadscope::ScanHtml {
namespace {

constexpr const char* styleSheet = R"(
:root { color-scheme: light dark; }
body { font: 15px/1.45 system-ui, sans-serif; max-width: 60em; margin: 2em auto; padding: 0 1em; }
h1 { font-size: 1.5em; margin: 0 0 0.2em; overflow-wrap: anywhere; }
h2 { font-size: 1.1em; margin: 1.8em 0 0.4em; }
.total { font-size: 1.8em; font-weight: bold; }
.quiet { opacity: 0.7; overflow-wrap: anywhere; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: 0.25em 0.6em 0.25em 0; border-bottom: 1px solid rgba(128, 128, 128, 0.3); overflow-wrap: anywhere; }
.number { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
)";

/// In points: pixels are of no size on paper.
constexpr const char* paperStyleSheet = R"(
h1 { font-size: 16pt; }
h2 { font-size: 11pt; }
.total { font-size: 15pt; }
th, td { padding: 1pt 4pt; border-bottom: 1px solid rgba(128, 128, 128, 0.3); }
)";

enum class Align { text, number };
struct Column {
    const char* title;
    int percent; ///< of the width on paper
    Align align = Align::text;
};

constexpr std::size_t rowsOfAPiece = 60;

/// Rows of one table; its cells are made harmless here.
class Table {
public:
    Table(Medium medium, std::vector<Column> columns) : medium_(medium), columns_(std::move(columns)) {}

    void add(std::initializer_list<std::string> cells) {
        if (medium_ == Medium::paper && count_ > 0 && count_ % rowsOfAPiece == 0)
            rows_ += "</tbody>\n</table>\n" + begin();
        ++count_;
        rows_ += "<tr>";
        std::size_t i = 0;
        for (const std::string& cell : cells)
            rows_ += tag("td", columns_[i++]) + escaped(cell) + "</td>";
        rows_ += "</tr>\n";
    }

    /// With its heading; empty without rows.
    [[nodiscard]] std::string under(std::string_view heading) const {
        if (rows_.empty()) return {};
        return "<h2>" + escaped(heading) + "</h2>\n" + begin() + rows_ + "</tbody>\n</table>\n";
    }

private:
    [[nodiscard]] std::string begin() const {
        std::string text = "<table width=\"100%\">\n<thead><tr>";
        for (const Column& column : columns_)
            text += tag("th", column) + escaped(column.title) + "</th>";
        return text + "</tr></thead>\n<tbody>\n";
    }

    [[nodiscard]] std::string tag(const char* name, const Column& column) const {
        std::string text = std::string("<") + name;
        if (medium_ == Medium::paper) text += " width=\"" + std::to_string(column.percent) + "%\"";
        return text +
               (column.align == Align::number ? R"( class="number" align="right">)" : R"( align="left">)");
    }

    Medium medium_;
    std::vector<Column> columns_;
    std::size_t count_ = 0;
    std::string rows_;
};

std::string paragraph(std::string_view text, const char* kind = "") {
    const std::string name = *kind == '\0' ? "" : std::string(" class=\"") + kind + '"';
    return "<p" + name + ">" + escaped(text) + "</p>\n";
}

std::string categories(const ScanReport& report, Medium medium) {
    Table table(
        medium,
        {{"Category", 40}, {"Tokens", 15, Align::number}, {"Share", 12, Align::number}, {"Source", 33}});
    for (const SlabAttribution& row : report.rows)
        table.add({row.name, LocaleFormat::grouped(row.tokens),
                   DetailsPresentation::share(report, row.tokens),
                   ScanPresentation::sourceLabel(report, row.provenance)});
    return table.under("Categories");
}

std::string members(const ScanReport& report, Medium medium) {
    Table table(medium,
                {{"Table", 18}, {"Group", 20}, {"Name", 38}, {"Tokens", 12, Align::number}, {"", 12}});
    for (const ContextMember& member : report.details.members)
        table.add({member.table, member.group, member.name,
                   DetailsPresentation::tokens({member.tokens, member.precision}),
                   member.onDemand ? DetailsPresentation::notCounted : ""});
    return table.under("What is inside");
}

std::string files(const ScanReport& report, Medium medium) {
    Table table(medium, {{"File", 48}, {"Whose", 18}, {"Tokens", 12, Align::number}, {"Source", 22}});
    for (const FilesPresentation::File& file : FilesPresentation::files(report))
        table.add({file.path, file.place, file.tokens, file.source});
    return table.under("Instruction files");
}

} // namespace

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : Text::visible(Text::repaired(text))) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string report(const ScanReport& report, Medium medium) {
    const std::string title = "Startup context of " + report.repositoryName;
    std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
                       escaped(title) + "</title>\n<style>" +
                       (medium == Medium::paper ? paperStyleSheet : styleSheet) +
                       "</style>\n</head>\n<body>\n<h1>" + escaped(title) + "</h1>\n" +
                       paragraph(report.repositoryPath, "quiet") + "<p><span class=\"total\"><b>" +
                       LocaleFormat::grouped(report.total) + " tokens</b></span><br>" +
                       escaped(ScanPresentation::totalCaption(report)) + "</p>\n" +
                       paragraph(ScanPresentation::headline(report));
    for (const std::string& note : ConditionsPresentation::notes(report))
        text += paragraph(note);
    text += categories(report, medium);
    for (const auto& line :
         {DetailsPresentation::onDemandLine(report), DetailsPresentation::spaceLine(report)})
        if (line) text += paragraph(*line, "quiet");
    text += members(report, medium) + files(report, medium) + "<h2>How it was measured</h2>\n" +
            paragraph(ScanPresentation::measurementNote(report));
    for (const std::string& line : ScanPresentation::summaryLines(report))
        text += paragraph(line, "quiet");
    std::string made = std::string("Made by Loadscope ") + Version::number();
    if (report.date) made += ", " + LocaleFormat::dateAndTime(*report.date);
    return text + paragraph(made, "quiet") + "</body>\n</html>\n";
}

} // namespace loadscope::ScanHtml
