// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/AppStyle.h"

#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace loadscope {
namespace {

constexpr int barExtent = 11;
constexpr int handleInset = 3;
constexpr int shortestHandle = 28;
constexpr int toolTipRadius = 6;
constexpr int lineWidth = 2;
constexpr double restingOpacity = 0.28;
constexpr double hoverOpacity = 0.5;

} // namespace

AppStyle::AppStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int AppStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return barExtent;
    case PM_ScrollBarSliderMin:
        return shortestHandle;
    case PM_ToolTipLabelFrameWidth:
        return toolTipRadius;
    case PM_TextCursorWidth:
        return lineWidth;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int AppStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* result) const {
    switch (hint) {
    case SH_ScrollBar_Transient:
        return 0;
    case SH_ToolTipLabel_Opacity:
        return 255;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QRect AppStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                               const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const bool vertical = bar->orientation == Qt::Vertical;
    const int length = vertical ? bar->rect.height() : bar->rect.width();
    const qint64 range = static_cast<qint64>(bar->maximum) - bar->minimum;
    int handle = length;
    if (range > 0) {
        handle = static_cast<int>(static_cast<qint64>(bar->pageStep) * length / (range + bar->pageStep));
        handle = qBound(shortestHandle, handle, qMax(shortestHandle, length));
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - handle, bar->upsideDown);
    const auto piece = [&](int from, int extent) {
        return vertical ? QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), extent)
                        : QRect(bar->rect.left() + from, bar->rect.top(), extent, bar->rect.height());
    };
    switch (part) {
    case SC_ScrollBarSlider:
        return piece(start, handle);
    case SC_ScrollBarSubPage:
        return piece(0, start);
    case SC_ScrollBarAddPage:
        return piece(start + handle, length - start - handle);
    case SC_ScrollBarGroove:
        return bar->rect;
    default:
        return {};
    }
}

void AppStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                  QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const QRectF handle = QRectF(subControlRect(control, option, SC_ScrollBarSlider, widget))
                              .adjusted(handleInset, handleInset, -handleInset, -handleInset);
    const bool hovered =
        bar->activeSubControls.testFlag(SC_ScrollBarSlider) || bar->state.testFlag(State_Sunken);
    const double radius = qMin(handle.width(), handle.height()) / 2;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(
        AppTheme::current().color(ThemeColor::secondaryText, hovered ? hoverOpacity : restingOpacity));
    painter->drawRoundedRect(handle, radius, radius);
    painter->restore();
}

void AppStyle::drawItemText(QPainter* painter, const QRect& area, int flags, const QPalette& palette,
                            bool isEnabled, const QString& text, QPalette::ColorRole role) const {
    constexpr int forced = Qt::TextForceLeftToRight | Qt::TextForceRightToLeft;
    const ReadingText::Direction direction(*painter, text, flags);
    QProxyStyle::drawItemText(painter, area, direction.flags() & ~forced, palette, isEnabled, text, role);
}

} // namespace loadscope
