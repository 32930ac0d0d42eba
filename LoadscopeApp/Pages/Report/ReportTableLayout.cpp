// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportTableLayout.h"

#include "LoadscopeApp/Text/NumberLabel.h"

#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double rowInset = 8;
constexpr double columnGap = 20;
constexpr double detailGap = 2;
constexpr double dotRoom = 16;
/// The longest words that the columns usually hold; no column becomes narrower.
constexpr QLatin1String nameWord("instructions");
constexpr QLatin1String sourceWord("bytes/token");
/// A text that wraps at words rarely fills its lines.
constexpr double wrapSlack = 1.12;
constexpr std::size_t mostRemembered = 6;

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
    const QFontMetricsF header(fonts.header);
    rows_ = &rows;
    breaker_.emplace(fonts.body);
    bodyLine_ = std::ceil(QFontMetricsF(fonts.body).height());
    detailLine_ = std::ceil(QFontMetricsF(fonts.detail).height());
    headerHeight_ = titles.name.isEmpty() ? 0 : std::ceil(header.height()) + 2 * rowInset;
    dotInset_ = std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.color.has_value(); })
                    ? dotRoom
                    : 0;
    tokensWidth_ = header.horizontalAdvance(titles.tokens);
    shareWidth_ = header.horizontalAdvance(titles.share);
    sourceWidth_ = header.horizontalAdvance(titles.source);
    nameWidths_.clear();
    narrowestName_ = dotInset_ + breaker_->width(nameWord) + 1;
    narrowestSource_ = breaker_->width(sourceWord) + 1;
    sourceWidths_.clear();
    WidthCache numbers;
    WidthCache sources;
    const auto numberWidth = [&fonts](const QString& text) { return TabularDigits::width(text, fonts.body); };
    const auto textWidth = [this](const QString& text) { return breaker_->width(text); };
    for (const ReportTableRow& row : rows) {
        nameWidths_.push_back(breaker_->width(row.name) + 1);
        sourceWidths_.push_back(sources(row.source, textWidth) + 1);
        tokensWidth_ = std::max(tokensWidth_, numbers(shapeOf(row.tokens), numberWidth));
        shareWidth_ = std::max(shareWidth_, numbers(shapeOf(row.share), numberWidth));
        sourceWidth_ = std::max(sourceWidth_, sourceWidths_.back());
    }
    placed_ = {};
    remembered_.clear();
}

double ReportTableLayout::roughLines(double natural, double width) {
    if (natural <= width) return 1;
    return std::min<double>(LineBreaker::mostLines, std::ceil(natural * wrapSlack / std::max(width, 1.0)));
}

double ReportTableLayout::sourceWidthFor(double room) const {
    // Whatever makes the table lower: sources on one line, or names that get more of the room.
    const double most = std::max(narrowestSource_, room - narrowestName_);
    double best = 0;
    double fewest = 0;
    for (const double share : {1.0, 0.8, 0.62, 0.5}) {
        const double width = std::min(most, std::max(narrowestSource_, sourceWidth_ * share));
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
    if (width != placed_.width && rows_ != nullptr) placed_ = remembered(width);
}

double ReportTableLayout::heightFor(double width) {
    if (width == placed_.width || rows_ == nullptr) return height();
    return remembered(width).tops.back();
}

const ReportTableLayout::Placement& ReportTableLayout::remembered(double width) {
    const auto known = std::find_if(remembered_.begin(), remembered_.end(),
                                    [width](const Placement& one) { return one.width == width; });
    if (known != remembered_.end()) return *known;
    if (remembered_.size() == mostRemembered) remembered_.erase(remembered_.begin());
    return remembered_.emplace_back(place(width));
}

std::array<ReportTableLayout::Span, ReportTableLayout::columnCount>
ReportTableLayout::placeColumns(double width) const {
    const bool hasNumbers = tokensWidth_ > 0 || shareWidth_ > 0;
    const double numbers = hasNumbers ? tokensWidth_ + shareWidth_ + 2 * columnGap : 0;
    const double room = std::max(0.0, width - numbers);
    const bool hasSource = sourceWidth_ > 1;
    const double sourceColumn = hasSource ? sourceWidthFor(room - columnGap) : 0;
    const double nameColumn = std::max(0.0, hasSource ? room - columnGap - sourceColumn : room);
    return {Span{0, nameColumn}, Span{nameColumn + columnGap, tokensWidth_},
            Span{nameColumn + 2 * columnGap + tokensWidth_, shareWidth_},
            Span{width - sourceColumn, sourceColumn}};
}

ReportTableLayout::Placement ReportTableLayout::place(double width) const {
    Placement result{width, placeColumns(width), {}, {headerHeight_}};
    const double nameWidth = result.columns[name].width - dotInset_;
    const double sourceWidth = result.columns[source].width;
    QHash<QString, int> sourceLines;
    for (std::size_t index = 0; index < rows_->size(); ++index) {
        const ReportTableRow& row = (*rows_)[index];
        result.nameHeights.push_back(bodyLine_ *
                                     breaker_->lineCount(row.name, nameWidths_[index], nameWidth));
        double height = result.nameHeights.back() + (row.detail.isEmpty() ? 0 : detailGap + detailLine_);
        if (sourceWidth > 0) {
            auto known = sourceLines.constFind(row.source);
            if (known == sourceLines.constEnd())
                known = sourceLines.insert(
                    row.source, breaker_->lineCount(row.source, sourceWidths_[index], sourceWidth));
            height = std::max(height, bodyLine_ * *known);
        }
        result.tops.push_back(result.tops.back() + height + 2 * rowInset);
    }
    return result;
}

QRectF ReportTableLayout::row(std::size_t index) const {
    const std::vector<double>& tops = placed_.tops;
    if (index + 1 >= tops.size()) return {};
    return {0, tops[index], std::max(0.0, placed_.width), tops[index + 1] - tops[index]};
}

QRectF ReportTableLayout::nameBox(std::size_t index) const {
    const QRectF line = row(index);
    const double detail = (*rows_)[index].detail.isEmpty() ? 0 : detailGap + detailLine_;
    const double height = index < placed_.nameHeights.size() ? placed_.nameHeights[index] : 0;
    // A name on fewer lines than its source stands in the middle of them.
    return {dotInset_, line.y() + (line.height() - height - detail) / 2,
            std::max(0.0, placed_.columns[name].width - dotInset_), height};
}

std::optional<std::size_t> ReportTableLayout::rowAt(double y) const {
    const std::vector<double>& tops = placed_.tops;
    if (tops.size() < 2 || y < tops.front() || y >= tops.back()) return {};
    const auto next = std::upper_bound(tops.begin(), tops.end(), y);
    return static_cast<std::size_t>(next - tops.begin()) - 1;
}

} // namespace loadscope
