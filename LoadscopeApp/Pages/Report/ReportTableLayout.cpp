// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTableLayout.h"

#include "LoadscopeApp/Components/NumberLabel.h"

#include <QFontMetricsF>
#include <QHash>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double rowInset = 8;
constexpr double columnGap = 20;
constexpr double detailGap = 2;
constexpr double dotRoom = 16;
constexpr double narrowestName = 96;
constexpr double narrowestSource = 72;
/// A text that wraps at words rarely fills its lines.
constexpr double wrapSlack = 1.12;

/// Widths of texts of which many are alike.
class WidthCache {
public:
    template <typename Measure>
    double operator()(const QString& key, const Measure& measure) {
        const auto known = widths_.constFind(key);
        if (known != widths_.constEnd()) return *known;
        return *widths_.insert(key, measure(key));
    }

private:
    QHash<QString, double> widths_;
};

/// Numbers of the same shape are equally wide, because all digits are.
QString shapeOf(QString number) {
    for (QChar& character : number) {
        if (character >= QLatin1Char('0') && character <= QLatin1Char('9')) character = QLatin1Char('0');
    }
    return number;
}

} // namespace

void ReportTableLayout::measure(const ReportTableTitles& titles, const std::vector<ReportTableRow>& rows,
                                const Fonts& fonts) {
    const QFontMetricsF body(fonts.body);
    const QFontMetricsF header(fonts.header);
    rows_ = &rows;
    body_ = fonts.body;
    bodyLine_ = std::ceil(body.height());
    detailLine_ = std::ceil(QFontMetricsF(fonts.detail).height());
    headerHeight_ = titles.name.isEmpty() ? 0 : std::ceil(header.height()) + 2 * rowInset;
    dotInset_ = std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.color.has_value(); })
                    ? dotRoom
                    : 0;
    tokensWidth_ = header.horizontalAdvance(titles.tokens);
    shareWidth_ = header.horizontalAdvance(titles.share);
    sourceWidth_ = header.horizontalAdvance(titles.source);
    nameWidths_.clear();
    sourceWidths_.clear();
    WidthCache numbers;
    WidthCache sources;
    const auto numberWidth = [&fonts](const QString& text) { return TabularDigits::width(text, fonts.body); };
    const auto textWidth = [&body](const QString& text) { return body.horizontalAdvance(text); };
    for (const ReportTableRow& row : rows) {
        nameWidths_.push_back(textWidth(row.name) + 1);
        sourceWidths_.push_back(sources(row.source, textWidth) + 1);
        tokensWidth_ = std::max(tokensWidth_, numbers(shapeOf(row.tokens), numberWidth));
        shareWidth_ = std::max(shareWidth_, numbers(shapeOf(row.share), numberWidth));
        sourceWidth_ = std::max(sourceWidth_, sourceWidths_.back());
    }
    width_ = -1;
}

std::unique_ptr<QTextLayout> ReportTableLayout::wrapped(const QString& text, const QFont& font, double width,
                                                        double lineHeight, Qt::LayoutDirection direction) {
    auto layout = std::make_unique<QTextLayout>(text, font);
    QTextOption option(Qt::AlignLeading);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(direction);
    layout->setTextOption(option);
    layout->beginLayout();
    double top = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(std::max(width, 1.0));
        line.setPosition({0, top});
        top += lineHeight;
    }
    layout->endLayout();
    return layout;
}

double ReportTableLayout::roughLines(double natural, double width) const {
    return natural <= width ? 1 : std::ceil(natural * wrapSlack / std::max(width, 1.0));
}

double ReportTableLayout::lines(const QString& text, double natural, double width) const {
    return natural <= width ? 1 : wrapped(text, body_, width, bodyLine_)->lineCount();
}

double ReportTableLayout::sourceWidthFor(double room) const {
    // Whatever makes the table lower: sources on one line, or names that get more of the room.
    const double most = std::max(narrowestSource, room - narrowestName);
    double best = 0;
    double fewest = 0;
    for (const double share : {1.0, 0.8, 0.62, 0.5}) {
        const double width = std::min(most, std::max(narrowestSource, sourceWidth_ * share));
        double total = 0;
        for (std::size_t row = 0; row < nameWidths_.size(); ++row)
            total += std::max(roughLines(nameWidths_[row], room - width - dotInset_),
                              roughLines(sourceWidths_[row], width));
        if (best > 0 && total >= fewest) continue;
        best = width;
        fewest = total;
    }
    return best;
}

void ReportTableLayout::setWidth(double width) {
    if (width == width_ || rows_ == nullptr) return;
    width_ = width;
    placeColumns();
    placeRows();
}

void ReportTableLayout::placeColumns() {
    const bool hasNumbers = tokensWidth_ > 0 || shareWidth_ > 0;
    const double numbers = hasNumbers ? tokensWidth_ + shareWidth_ + 2 * columnGap : 0;
    const double room = std::max(0.0, width_ - numbers);
    const bool hasSource = sourceWidth_ > 1;
    const double sourceColumn = hasSource ? sourceWidthFor(room - columnGap) : 0;
    const double nameColumn = std::max(0.0, hasSource ? room - columnGap - sourceColumn : room);
    columns_[name] = {0, nameColumn};
    columns_[tokens] = {nameColumn + columnGap, tokensWidth_};
    columns_[share] = {nameColumn + 2 * columnGap + tokensWidth_, shareWidth_};
    columns_[source] = {width_ - sourceColumn, sourceColumn};
}

void ReportTableLayout::placeRows() {
    const double nameWidth = columns_[name].width - dotInset_;
    const double sourceWidth = columns_[source].width;
    QHash<QString, double> sourceLines;
    nameHeights_.clear();
    tops_.assign(1, headerHeight_);
    for (std::size_t index = 0; index < rows_->size(); ++index) {
        const ReportTableRow& row = (*rows_)[index];
        nameHeights_.push_back(bodyLine_ * lines(row.name, nameWidths_[index], nameWidth));
        double height = nameHeights_.back() + (row.detail.isEmpty() ? 0 : detailGap + detailLine_);
        if (sourceWidth > 0) {
            auto known = sourceLines.constFind(row.source);
            if (known == sourceLines.constEnd())
                known = sourceLines.insert(row.source, lines(row.source, sourceWidths_[index], sourceWidth));
            height = std::max(height, bodyLine_ * *known);
        }
        tops_.push_back(tops_.back() + height + 2 * rowInset);
    }
}

QRectF ReportTableLayout::row(std::size_t index) const {
    if (index + 1 >= tops_.size()) return {};
    return {0, tops_[index], std::max(0.0, width_), tops_[index + 1] - tops_[index]};
}

QRectF ReportTableLayout::nameBox(std::size_t index) const {
    const QRectF line = row(index);
    const double detail = (*rows_)[index].detail.isEmpty() ? 0 : detailGap + detailLine_;
    const double height = index < nameHeights_.size() ? nameHeights_[index] : 0;
    // A name on fewer lines than its source stands in the middle of them.
    return {dotInset_, line.y() + (line.height() - height - detail) / 2,
            std::max(0.0, columns_[name].width - dotInset_), height};
}

std::optional<std::size_t> ReportTableLayout::rowAt(double y) const {
    if (tops_.size() < 2 || y < tops_.front() || y >= tops_.back()) return {};
    const auto next = std::upper_bound(tops_.begin(), tops_.end(), y);
    return static_cast<std::size_t>(next - tops_.begin()) - 1;
}

} // namespace loadscope
