// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

class QTextLayout;

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

/// Where everything in a report's table is, for one width. Texts are measured once, so that a new width costs
/// little even with thousands of rows.
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

    /// How a table breaks a text into lines: at words, and anywhere where a word is too long. The lines are
    /// `lineHeight` apart.
    [[nodiscard]] static std::unique_ptr<QTextLayout>
    wrapped(const QString& text, const QFont& font, double width, double lineHeight,
            Qt::LayoutDirection direction = Qt::LeftToRight);

    /// Measures the texts. `rows` must outlive the layout or the next call.
    void measure(const ReportTableTitles& titles, const std::vector<ReportTableRow>& rows,
                 const Fonts& fonts);

    /// Places everything within this width; does nothing when it is the present one.
    void setWidth(double width);

    [[nodiscard]] double height() const { return tops_.empty() ? headerHeight_ : tops_.back(); }
    [[nodiscard]] double width() const { return width_; }
    [[nodiscard]] double headerHeight() const { return headerHeight_; }
    [[nodiscard]] Span column(Column column) const { return columns_[column]; }
    [[nodiscard]] QRectF row(std::size_t index) const;
    /// Where the name's text stands: beside its dot, above its detail.
    [[nodiscard]] QRectF nameBox(std::size_t index) const;
    [[nodiscard]] double bodyLineHeight() const { return bodyLine_; }
    [[nodiscard]] double dotInset() const { return dotInset_; }
    [[nodiscard]] std::optional<std::size_t> rowAt(double y) const;

private:
    [[nodiscard]] double roughLines(double natural, double width) const;
    [[nodiscard]] double lines(const QString& text, double natural, double width) const;
    [[nodiscard]] double sourceWidthFor(double room) const;
    void placeColumns();
    void placeRows();

    const std::vector<ReportTableRow>* rows_ = nullptr;
    QFont body_;
    std::vector<double> nameWidths_;
    std::vector<double> nameHeights_;
    std::vector<double> sourceWidths_;
    double tokensWidth_ = 0;
    double shareWidth_ = 0;
    double sourceWidth_ = 0;
    double bodyLine_ = 0;
    double detailLine_ = 0;
    double headerHeight_ = 0;
    double dotInset_ = 0;
    double width_ = -1;
    Span columns_[columnCount];
    std::vector<double> tops_; ///< of each row, then the bottom of the last
};

} // namespace loadscope
