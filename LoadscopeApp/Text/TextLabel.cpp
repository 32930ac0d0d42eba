// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/TextLabel.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Text/CharacterWidths.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/TextWidths.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int usualWidth = 420;
constexpr int narrowest = 60;

bool hasBreaks(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character < QLatin1Char(' ') || character == QChar::LineSeparator ||
               character == QChar::ParagraphSeparator;
    });
}

} // namespace

TextLabel::TextLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : QLabel(parent), style_(style), color_(color) {
    setTextFormat(Qt::PlainText);
    setText(text);
    // Inside a button a label would otherwise take the button's colour.
    setForegroundRole(QPalette::WindowText);
    AppTheme::bind(this, [this] { applyTheme(); });
}

TextLabel::~TextLabel() = default;

TextLabel* TextLabel::note(const QString& text, TextStyle style) {
    auto* label = new TextLabel(text, style, ThemeColor::secondaryText);
    label->setWraps();
    return label;
}

TextLabel* TextLabel::heading(const QString& text, TextStyle style, ThemeColor color) {
    auto* label = new TextLabel(text, style, color);
    label->setWeight(QFont::DemiBold);
    AccessibleTraits::setRole(label, QAccessible::Heading, text);
    return label;
}

void TextLabel::setColor(ThemeColor color) {
    if (color == color_) return;
    color_ = color;
    applyTheme();
}

void TextLabel::setWeight(QFont::Weight weight) {
    weight_ = weight;
    applyTheme();
}

void TextLabel::setWraps() {
    heights_.forget();
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextLabel::setSelectable() {
    heights_.forget();
    selectable_ = true;
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    // The toolkit would set an English text to the left of a mirrored window.
    setAlignment(QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::AlignAbsolute);
}

QTextLayout& TextLabel::shaped() const {
    forgetWhenChanged();
    if (shaped_ == nullptr) {
        QString shown = measuredText_;
        shown.replace(QLatin1Char('\n'), QChar::LineSeparator);
        shaped_ = std::make_unique<QTextLayout>(shown, measuredFont_);
        shaped_->setCacheEnabled(true);
    }
    return *shaped_;
}

int TextLabel::layOutLines(int width, QPainter* painter, int top) const {
    QTextLayout& layout = shaped();
    const Qt::Alignment horizontal = alignment() & Qt::AlignHorizontal_Mask;
    QTextOption option(QStyle::visualAlignment(layoutDirection(), horizontal) | Qt::AlignAbsolute);
    // The text's own direction, so that its full stop stays at its end in a window that is the other way
    // round.
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setWrapMode(isOneLine(width) ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const int spacing = AppTheme::lineSpacing(style_, font());
    int height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, narrowest));
        line.setPosition({0, height + (spacing - line.height()) / 2});
        height += spacing;
    }
    layout.endLayout();
    if (painter != nullptr) layout.draw(painter, QPointF(0, top));
    return height;
}

void TextLabel::forgetWhenChanged() const {
    if (measuredText_ == text() && measuredFont_ == font()) return;
    heights_.forget();
    naturalWidth_.reset();
    shaped_.reset();
    measuredText_ = text();
    measuredFont_ = font();
}

int TextLabel::naturalWidth() const {
    forgetWhenChanged();
    if (!naturalWidth_) naturalWidth_ = static_cast<int>(std::ceil(TextWidths::of(text(), font()))) + 1;
    return *naturalWidth_;
}

bool TextLabel::isOneLine(int width) const {
    return naturalWidth() <= std::max(width, narrowest) && !hasBreaks(measuredText_);
}

int TextLabel::heightForWidth(int width) const {
    forgetWhenChanged();
    return heights_.at(width, [this](int wanted) {
        if (!laysOutItself()) return QLabel::heightForWidth(wanted);
        // Most texts have room, and need not be set to know it.
        return isOneLine(wanted) ? AppTheme::lineSpacing(style_, font()) : layOutLines(wanted, nullptr, 0);
    });
}

QSize TextLabel::sizeHint() const {
    if (isPlainLine()) return lineSize();
    if (!laysOutItself()) return QLabel::sizeHint();
    const int width = std::clamp(naturalWidth(), 1, AppTheme::current().scaled(usualWidth));
    return {width, heightForWidth(width)};
}

QSize TextLabel::minimumSizeHint() const {
    if (isPlainLine()) return lineSize();
    if (!laysOutItself()) return QLabel::minimumSizeHint();
    return {std::min(narrowest, sizeHint().width()), AppTheme::lineSpacing(style_, font())};
}

bool TextLabel::isPlainLine() const {
    return !wordWrap() && !text().isEmpty() && contentsMargins().isNull() &&
           CharacterWidths::covers(text()) && !hasBreaks(text());
}

QSize TextLabel::lineSize() const {
    ensurePolished();
    const QFontMetricsF metrics(font());
    const double overhang = std::max(0.0, -metrics.rightBearing(text().back()));
    return {static_cast<int>(std::ceil(TextWidths::of(text(), font()) + overhang)),
            static_cast<int>(std::ceil(metrics.height()))};
}

void TextLabel::paintEvent(QPaintEvent* event) {
    if (selectable_) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(AppTheme::current().color(color_));
    if (!wordWrap()) {
        ReadingText::draw(painter, contentsRect(), static_cast<int>(alignment()), text());
        return;
    }
    const int spare = height() - heightForWidth(width());
    layOutLines(width(), &painter, alignment().testFlag(Qt::AlignVCenter) ? std::max(0, spare / 2) : 0);
}

void TextLabel::applyTheme() {
    const AppTheme& theme = AppTheme::current();
    setFont(weight_ ? theme.font(style_, *weight_) : theme.font(style_));
    QPalette palette = theme.palette();
    palette.setColor(QPalette::All, QPalette::WindowText, theme.color(color_));
    palette.setColor(QPalette::All, QPalette::Text, theme.color(color_));
    setPalette(palette);
    updateGeometry();
}

} // namespace loadscope
