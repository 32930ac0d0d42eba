// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartLegend.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/ChartText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/TextWidths.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double dotDiameter = 8;
constexpr double dotGap = 6;
constexpr double entryGap = 16;
constexpr double lineGap = 4;

QFont legendFont() { return AppTheme::current().font(TextStyle::caption); }

} // namespace

ChartLegend::ChartLegend(QWidget* parent) : QWidget(parent) {
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void ChartLegend::setEntries(std::vector<Entry> entries) {
    entries_ = std::move(entries);
    QStringList names;
    for (const Entry& entry : entries_)
        names.append(entry.label);
    setAccessibleName(names.join(QStringLiteral(", ")));
    updateGeometry();
    update();
}

std::vector<QRectF> ChartLegend::entryAreas(double width) const {
    const QFont font = legendFont();
    const QFontMetricsF metrics(font);
    std::vector<QRectF> areas;
    double x = 0;
    double y = 0;
    for (const Entry& entry : entries_) {
        const double whole = dotDiameter + dotGap + std::ceil(TextWidths::of(entry.label, font)) + 1;
        const double length = std::min(whole, width);
        if (x > 0 && x + length > width) {
            x = 0;
            y += metrics.height() + lineGap;
        }
        areas.emplace_back(x, y, length, metrics.height());
        x += length + entryGap;
    }
    return areas;
}

int ChartLegend::heightForWidth(int width) const {
    const std::vector<QRectF> areas = entryAreas(width);
    return areas.empty() ? 0 : static_cast<int>(std::ceil(areas.back().bottom()));
}

QSize ChartLegend::sizeHint() const { return {200, heightForWidth(std::max(width(), 200))}; }

QSize ChartLegend::minimumSizeHint() const {
    return {80, static_cast<int>(std::ceil(QFontMetricsF(legendFont()).height()))};
}

void ChartLegend::paint(QPainter& painter, double width) const {
    const AppTheme& theme = AppTheme::current();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(legendFont());
    const std::vector<QRectF> areas = entryAreas(width);
    for (std::size_t index = 0; index < areas.size(); ++index) {
        const QRectF& area = areas[index];
        const QColor color = theme.chartColor(entries_[index].paletteIndex);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(
            QRectF(area.left(), area.center().y() - dotDiameter / 2, dotDiameter, dotDiameter));
        painter.setPen(color);
        ChartText::paintElided(painter, area.adjusted(dotDiameter + dotGap, 0, 0, 0),
                               Qt::AlignLeft | Qt::AlignVCenter, entries_[index].label);
    }
}

void ChartLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, width());
}

bool ChartLegend::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const std::vector<QRectF> areas = entryAreas(width());
    QString text;
    for (std::size_t index = 0; index < areas.size(); ++index) {
        if (areas[index].contains(help->pos()) && areas[index].width() >= width())
            text = entries_[index].label;
    }
    PlainToolTip::show(help->globalPos(), text, this);
    return true;
}

} // namespace loadscope
