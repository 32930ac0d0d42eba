// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/TableLayout.h"

#include "LoadscopeApp/Text/NumberLabel.h"

#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace loadscope {
namespace {

constexpr double dotRoom = 16;
constexpr double levelInset = 16;
constexpr double outlineRoom = 18;
/// The longest words that the columns usually hold; no column becomes narrower.
constexpr QLatin1String nameWord("instructions");
constexpr QLatin1String textWord("bytes/token");
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

TableLayout::TableLayout(const TableColumns& columns, const std::vector<TableRow>& rows, TableStyle style)
    : columns_(columns), rows_(rows), style_(style) {
    std::vector<std::size_t> all(rows.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    show(std::move(all));
}

void TableLayout::measureTitles(const QFontMetricsF& header) {
    headerHeight_ = columns_.hasHeader() ? std::ceil(header.height()) + 2 * style_.rowInset : 0;
    numberWidths_.clear();
    for (const QString& title : columns_.numbers)
        numberWidths_.push_back(header.horizontalAdvance(title));
    textWidth_ = columns_.text ? header.horizontalAdvance(*columns_.text) : 0;
}

void TableLayout::measure(const Fonts& fonts) {
    breaker_.emplace(fonts.body);
    bodyLine_ = std::ceil(QFontMetricsF(fonts.body).height());
    detailLine_ = std::ceil(QFontMetricsF(fonts.detail).height());
    dotInset_ = std::any_of(rows_.begin(), rows_.end(), [](const auto& row) { return row.color.has_value(); })
                    ? dotRoom
                    : 0;
    chevronRoom_ = std::any_of(rows_.begin(), rows_.end(), [](const auto& row) { return row.level > 0; })
                       ? outlineRoom
                       : 0;
    measureTitles(QFontMetricsF(fonts.header));
    narrowestName_ = chevronRoom_ + dotInset_ + breaker_->width(nameWord) + 1;
    narrowestText_ = breaker_->width(textWord) + 1;
    nameWidths_.clear();
    textWidths_.clear();
    firstNumbers_.clear();
    WidthCache numbers;
    WidthCache texts;
    const auto numberWidth = [&fonts](const QString& text) { return TabularDigits::width(text, fonts.body); };
    const auto textWidth = [this](const QString& text) { return breaker_->width(text); };
    for (const TableRow& row : rows_) {
        nameWidths_.push_back(breaker_->width(row.name) + 1);
        for (std::size_t column = 0; column < numberWidths_.size(); ++column) {
            const double width = numbers(shapeOf(row.cells.at(column)), numberWidth);
            numberWidths_[column] = std::max(numberWidths_[column], width);
            if (column == 0) firstNumbers_.push_back(width);
        }
        if (!columns_.text) continue;
        textWidths_.push_back(texts(row.cells.at(numberWidths_.size()), textWidth) + 1);
        textWidth_ = std::max(textWidth_, textWidths_.back());
    }
    forgetPlaces();
}

void TableLayout::show(std::vector<std::size_t> rows) {
    shown_ = std::move(rows);
    positions_.assign(rows_.size(), std::nullopt);
    for (std::size_t position = 0; position < shown_.size(); ++position)
        positions_.at(shown_[position]) = position;
    forgetPlaces();
}

void TableLayout::forgetPlaces() {
    placed_ = {};
    remembered_.clear();
}

double TableLayout::roughLines(double natural, double width) {
    if (natural <= width) return 1;
    return std::min<double>(LineBreaker::mostLines, std::ceil(natural * wrapSlack / std::max(width, 1.0)));
}

double TableLayout::textWidthFor(double room) const {
    // Whatever makes the table lower: texts on one line, or names that get more of the room.
    const double most = std::max(narrowestText_, room - narrowestName_);
    double best = 0;
    double fewest = 0;
    for (const double share : {1.0, 0.8, 0.62, 0.5}) {
        const double width = std::min(most, std::max(narrowestText_, textWidth_ * share));
        double total = 0;
        for (const std::size_t row : shown_)
            total += std::max(roughLines(nameWidths_[row], room - width - inset(row)),
                              roughLines(textWidths_[row], width));
        if (best > 0 && total >= fewest) continue;
        best = width;
        fewest = total;
    }
    return best;
}

void TableLayout::setWidth(double width) {
    if (width != placed_.width && breaker_) placed_ = remembered(width);
}

double TableLayout::heightFor(double width) {
    if (width == placed_.width || !breaker_) return height();
    return remembered(width).tops.back();
}

const TableLayout::Placement& TableLayout::remembered(double width) {
    const auto known = std::find_if(remembered_.begin(), remembered_.end(),
                                    [width](const Placement& one) { return one.width == width; });
    if (known != remembered_.end()) return *known;
    if (remembered_.size() == mostRemembered) remembered_.erase(remembered_.begin());
    return remembered_.emplace_back(place(width));
}

std::vector<TableLayout::Span> TableLayout::placeColumns(double width) const {
    const bool hasText = textWidth_ > 1;
    const double numbers = std::accumulate(numberWidths_.begin(), numberWidths_.end(), 0.0) +
                           style_.columnGap * static_cast<double>(numberWidths_.size());
    const double room = std::max(0.0, width - numbers - (hasText ? style_.columnGap : 0));
    const double textColumn = hasText ? textWidthFor(room) : 0;
    std::vector<Span> columns{{0, std::max(0.0, room - textColumn)}};
    for (const double number : numberWidths_)
        columns.push_back({columns.back().left + columns.back().width + style_.columnGap, number});
    if (hasText) columns.push_back({width - textColumn, textColumn});
    return columns;
}

double TableLayout::nameRoom(std::size_t row) const {
    // A name that is cut is cut where its own number begins.
    const double more = style_.wraps || firstNumbers_.empty() ? 0 : numberWidths_[0] - firstNumbers_[row];
    return std::max(0.0, column(0).width + more - inset(row));
}

double TableLayout::inset(std::size_t row) const {
    return chevronRoom_ + dotInset_ + rows_[row].level * levelInset;
}

TableLayout::Placement TableLayout::place(double width) const {
    Placement result{width, placeColumns(width), {}, {headerHeight_}};
    const double nameColumn = result.columns.front().width;
    const double textColumn = textWidths_.empty() ? 0 : result.columns.back().width;
    QHash<QString, int> textLines;
    for (const std::size_t index : shown_) {
        const TableRow& row = rows_[index];
        const int nameLines =
            style_.wraps ? breaker_->lineCount(row.name, nameWidths_[index], nameColumn - inset(index)) : 1;
        result.nameHeights.push_back(bodyLine_ * nameLines);
        double height = result.nameHeights.back() + (row.detail.isEmpty() ? 0 : detailGap + detailLine_);
        if (textColumn > 0) {
            const QString& text = row.cells.back();
            auto known = textLines.constFind(text);
            if (known == textLines.constEnd())
                known = textLines.insert(text, breaker_->lineCount(text, textWidths_[index], textColumn));
            height = std::max(height, bodyLine_ * *known);
        }
        result.tops.push_back(result.tops.back() + height + 2 * style_.rowInset);
    }
    return result;
}

TableLayout::Span TableLayout::column(std::size_t column) const {
    return column < placed_.columns.size() ? placed_.columns[column] : Span();
}

QRectF TableLayout::row(std::size_t row) const {
    const std::vector<double>& tops = placed_.tops;
    const auto position = positionOf(row);
    if (!position || *position + 1 >= tops.size()) return {};
    return {0, tops[*position], std::max(0.0, placed_.width), tops[*position + 1] - tops[*position]};
}

QRectF TableLayout::nameBox(std::size_t index) const {
    const QRectF line = row(index);
    if (line.isEmpty()) return {};
    const double detail = rows_[index].detail.isEmpty() ? 0 : detailGap + detailLine_;
    const double height = placed_.nameHeights[*positionOf(index)];
    // A name on fewer lines than the text beside it stands in the middle of them.
    return {inset(index), line.y() + (line.height() - height - detail) / 2, nameRoom(index), height};
}

std::optional<std::size_t> TableLayout::positionOf(std::size_t row) const {
    return row < positions_.size() ? positions_[row] : std::nullopt;
}

std::optional<std::size_t> TableLayout::positionAt(double y) const {
    const std::vector<double>& tops = placed_.tops;
    if (tops.size() < 2 || y < tops.front() || y >= tops.back()) return {};
    const auto next = std::upper_bound(tops.begin(), tops.end(), y);
    return static_cast<std::size_t>(next - tops.begin()) - 1;
}

BrokenText TableLayout::broken(const QString& text, double width) const {
    return style_.wraps ? breaker_->broken(text, width) : breaker_->cut(text, width);
}

} // namespace loadscope
