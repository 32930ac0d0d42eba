// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/SelectionLine.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr double dotSize = 8;
constexpr double gap = 6;

QString invitation() { return QStringLiteral("Hover a segment for its share."); }

} // namespace

SelectionLine::SelectionLine(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText, invitation());
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void SelectionLine::select(std::optional<Selected> selected) {
    selected_ = std::move(selected);
    setAccessibleName(text());
    update();
}

QString SelectionLine::text() const {
    return selected_ ? selected_->name + QLatin1Char(' ') + selected_->share : invitation();
}

QSize SelectionLine::sizeHint() const {
    const QFontMetrics metrics(AppTheme::current().font(TextStyle::caption));
    return {metrics.horizontalAdvance(invitation()) + 2, metrics.height() + 4};
}

void SelectionLine::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(theme.font(TextStyle::caption));
    if (!selected_) {
        painter.setPen(theme.color(ThemeColor::secondaryText));
        ReadingText::draw(painter, rect(), Qt::AlignCenter | Qt::TextSingleLine, invitation());
        return;
    }
    const QFont bold = theme.font(TextStyle::caption, QFont::DemiBold);
    const double shareWidth = QFontMetricsF(bold).horizontalAdvance(selected_->share) + 1;
    const QFontMetricsF metrics(painter.font());
    const double room = std::max(0.0, width() - dotSize - 2 * gap - shareWidth);
    const QString name = metrics.elidedText(selected_->name, Qt::ElideRight, room);
    const double nameWidth = metrics.horizontalAdvance(name) + 1;
    double left = std::max(0.0, (width() - dotSize - 2 * gap - nameWidth - shareWidth) / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.chartColor(selected_->color));
    painter.drawEllipse(QRectF(left, (height() - dotSize) / 2, dotSize, dotSize));
    left += dotSize + gap;
    painter.setPen(theme.color(ThemeColor::primaryText));
    ReadingText::draw(painter, QRectF(left, 0, nameWidth, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                      name);
    left += nameWidth + gap;
    painter.setFont(bold);
    ReadingText::draw(painter, QRectF(left, 0, shareWidth, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                      selected_->share);
}

} // namespace loadscope
