// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/LineBreaker.h"

#include <QRectF>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace loadscope {

/// One line of a report's table. Texts are shown as they are.
struct ReportTableRow {
    std::optional<std::size_t> color; ///< entry of the chart palette for the dot before the name
    QString name;
    QString detail; ///< below the name
    QString tokens;
    QString share;
    QString source;
};

/// The titles of a table's columns. A table without titles has no header and one column.
struct ReportTableTitles {
    QString name;
    QString tokens;
    QString share;
    QString source; ///< empty: the table has no such column
};

/// Where everything in a report's table is, for one width. Texts are measured once and the last few widths
/// are remembered, because layouts ask for several again and again before they settle.
class ReportTableLayout {
public:
    enum Column { name, tokens, share, source };
    static constexpr std::size_t columnCount = 4;

    struct Fonts {
        QFont header;
        QFont body;
        QFont detail;
    };

    /// A piece of a line, in widget coordinates of a table written from left to right.
    struct Span {
        double left = 0;
        double width = 0;
    };

    /// Measures the texts. `rows` must outlive the layout or the next call.
    void measure(const ReportTableTitles& titles, const std::vector<ReportTableRow>& rows,
                 const Fonts& fonts);

    /// Places everything within this width.
    void setWidth(double width);
    /// The height that another width would need; what is placed stays.
    [[nodiscard]] double heightFor(double width);

    [[nodiscard]] double height() const { return placed_.tops.empty() ? headerHeight_ : placed_.tops.back(); }
    [[nodiscard]] double headerHeight() const { return headerHeight_; }
    [[nodiscard]] Span column(Column column) const { return placed_.columns[column]; }
    [[nodiscard]] QRectF row(std::size_t index) const;
    /// Where the name's text stands: beside its dot, above its detail.
    [[nodiscard]] QRectF nameBox(std::size_t index) const;
    [[nodiscard]] double bodyLineHeight() const { return bodyLine_; }
    [[nodiscard]] double dotInset() const { return dotInset_; }
    [[nodiscard]] std::optional<std::size_t> rowAt(double y) const;
    /// A text of the table on the lines that it has there.
    [[nodiscard]] BrokenText broken(const QString& text, double width) const {
        return breaker_->broken(text, width);
    }

private:
    struct Placement {
        double width = -1;
        std::array<Span, columnCount> columns;
        std::vector<double> nameHeights;
        std::vector<double> tops; ///< of each row, then the bottom of the last
    };

    [[nodiscard]] static double roughLines(double natural, double width);
    [[nodiscard]] double sourceWidthFor(double room) const;
    [[nodiscard]] const Placement& remembered(double width);
    [[nodiscard]] Placement place(double width) const;
    [[nodiscard]] std::array<Span, columnCount> placeColumns(double width) const;

    const std::vector<ReportTableRow>* rows_ = nullptr;
    std::optional<LineBreaker> breaker_; ///< from `measure` on
    std::vector<double> nameWidths_;
    std::vector<double> sourceWidths_;
    double narrowestName_ = 0;
    double narrowestSource_ = 0;
    double tokensWidth_ = 0;
    double shareWidth_ = 0;
    double sourceWidth_ = 0;
    double bodyLine_ = 0;
    double detailLine_ = 0;
    double headerHeight_ = 0;
    double dotInset_ = 0;
    Placement placed_;
    std::vector<Placement> remembered_; ///< the latest last
};

} // namespace loadscope
