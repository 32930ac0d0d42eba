// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/ReadinessRow.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/TextWidths.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QFontMetrics>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int gap = 12;
constexpr int padding = 2;

QFontMetrics metrics() { return QFontMetrics(AppTheme::current().font(TextStyle::body)); }

QRect wrapped(const QString& text, int width) {
    return metrics().boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, text);
}

} // namespace

ReadinessRow::ReadinessRow(const QString& tool, QWidget* parent) : QWidget(parent), tool_(tool) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    setReadiness(ToolReadiness::checking);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void ReadinessRow::setReadiness(ToolReadiness readiness) {
    value_ = DisplayText::own(label(readiness));
    setAccessibleName(DisplayText::own(label(tool_.toStdString(), readiness)));
    AccessibleTraits::setValue(this, value_);
    updateGeometry();
    update();
}

bool ReadinessRow::isStacked(int width) const {
    const QFont font = AppTheme::current().font(TextStyle::body);
    return TextWidths::of(tool_, font) + gap + TextWidths::of(value_, font) > width;
}

int ReadinessRow::heightForWidth(int width) const {
    const int line = metrics().height();
    return (isStacked(width) ? line + wrapped(value_, width).height() : line) + 2 * padding;
}

QSize ReadinessRow::sizeHint() const {
    const int width = metrics().horizontalAdvance(tool_) + gap + metrics().horizontalAdvance(value_);
    return {width, heightForWidth(this->width())};
}

QSize ReadinessRow::minimumSizeHint() const {
    return {metrics().averageCharWidth() * 12, metrics().height() + 2 * padding};
}

void ReadinessRow::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setFont(theme.font(TextStyle::body));
    painter.setPen(theme.color(ThemeColor::primaryText));
    const QRect area = rect().adjusted(0, padding, 0, -padding);
    const int line = metrics().height();
    ReadingText::draw(painter, QRect(area.topLeft(), QSize(area.width(), line)),
                      Qt::AlignLeading | Qt::AlignVCenter, tool_);
    painter.setPen(theme.color(ThemeColor::secondaryText));
    if (isStacked(width()))
        ReadingText::draw(painter, area.adjusted(0, line, 0, 0),
                          Qt::AlignLeading | Qt::AlignTop | Qt::TextWordWrap, value_);
    else
        ReadingText::draw(painter, area, Qt::AlignTrailing | Qt::AlignVCenter, value_);
}

} // namespace loadscope
