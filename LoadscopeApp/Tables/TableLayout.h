// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/TableRow.h"
#include "LoadscopeApp/Text/LineBreaker.h"

#include <QRectF>

namespace loadscope {

/// Where everything in a table is, for one width. Only some of the rows may be shown, in any order. Texts are
/// measured once, also those of rows that are not shown, so that no column moves when they are; and the last
/// few widths are remembered, because layouts ask for several again and again before they settle.
class TableLayout {
public:
    static constexpr double detailGap = 2; ///< between a name and its detail

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

    /// Of all rows. `columns` and `rows` must outlive the layout.
    TableLayout(const TableColumns& columns, const std::vector<TableRow>& rows, TableStyle style);

    /// Measures the texts. Nothing is placed until the next `setWidth`.
    void measure(const Fonts& fonts);
    /// Shows these rows, in this order. Nothing is placed until the next `setWidth`.
    void show(std::vector<std::size_t> rows);
    /// Places everything within this width.
    void setWidth(double width);
    /// The height that another width would need; what is placed stays.
    [[nodiscard]] double heightFor(double width);

    [[nodiscard]] const TableStyle& style() const { return style_; }
    /// The rows that are shown, from top to bottom.
    [[nodiscard]] const std::vector<std::size_t>& shown() const { return shown_; }
    /// Where a row stands among those that are shown.
    [[nodiscard]] std::optional<std::size_t> positionOf(std::size_t row) const;
    /// Which of the rows that are shown stands at a height.
    [[nodiscard]] std::optional<std::size_t> positionAt(double y) const;

    [[nodiscard]] double height() const { return placed_.tops.empty() ? headerHeight_ : placed_.tops.back(); }
    [[nodiscard]] double headerHeight() const { return headerHeight_; }
    [[nodiscard]] Span column(std::size_t column) const;
    /// Empty for a row that is not shown.
    [[nodiscard]] QRectF row(std::size_t row) const;
    /// Where the name's text stands: beside its dot, above its detail.
    [[nodiscard]] QRectF nameBox(std::size_t row) const;
    [[nodiscard]] double bodyLineHeight() const { return bodyLine_; }
    [[nodiscard]] double dotInset() const { return dotInset_; }
    /// What stands between the edge of the table and the dot or the name of a row at the top: a chevron.
    [[nodiscard]] double chevronRoom() const { return chevronRoom_; }
    /// A text of the table on the lines that it has there.
    [[nodiscard]] BrokenText broken(const QString& text, double width) const;

private:
    struct Placement {
        double width = -1;
        std::vector<Span> columns;
        std::vector<double> nameHeights; ///< of each row that is shown
        std::vector<double> tops;        ///< of each row that is shown, then the bottom of the last
    };

    void measureTitles(const QFontMetricsF& header);
    [[nodiscard]] static double roughLines(double natural, double width);
    [[nodiscard]] double textWidthFor(double room) const;
    [[nodiscard]] const Placement& remembered(double width);
    [[nodiscard]] Placement place(double width) const;
    [[nodiscard]] std::vector<Span> placeColumns(double width) const;
    [[nodiscard]] double nameRoom(std::size_t row) const;
    [[nodiscard]] double inset(std::size_t row) const;
    void forgetPlaces();

    const TableColumns& columns_;
    const std::vector<TableRow>& rows_;
    TableStyle style_;
    std::vector<std::size_t> shown_;
    std::vector<std::optional<std::size_t>> positions_; ///< by row
    std::optional<LineBreaker> breaker_;                ///< from `measure` on
    std::vector<double> nameWidths_;
    std::vector<double> textWidths_;   ///< of the last column's texts; empty without that column
    std::vector<double> numberWidths_; ///< of each column of numbers
    std::vector<double> firstNumbers_; ///< of the first column of numbers, by row
    double narrowestName_ = 0;
    double narrowestText_ = 0;
    double textWidth_ = 0;
    double bodyLine_ = 0;
    double detailLine_ = 0;
    double headerHeight_ = 0;
    double dotInset_ = 0;
    double chevronRoom_ = 0;
    Placement placed_;
    std::vector<Placement> remembered_; ///< the latest last
};

} // namespace loadscope
