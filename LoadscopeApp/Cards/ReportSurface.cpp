// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/ReportSurface.h"

#include "LoadscopeApp/Cards/ShadowCanvas.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QPainter>
#include <QVBoxLayout>

namespace loadscope {

ReportSurface::ReportSurface(QWidget* parent)
    : QWidget(parent),
      content_(new QVBoxLayout(this)),
      elevation_(new ValueAnimation(this, 0, [this](double) { updateShadow(); })) {
    content_->setContentsMargins(Metrics::cardInset, Metrics::cardInset, Metrics::cardInset,
                                 Metrics::cardInset);
    content_->setSpacing(12);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    AppTheme::bind(this, [this] { update(); });
}

double ReportSurface::elevation() const { return elevation_->value(); }

void ReportSurface::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(ThemeColor::card));
    painter.drawRoundedRect(frame, Metrics::cardRadius, Metrics::cardRadius);
    QLinearGradient wash(frame.topLeft(), frame.bottomLeft());
    wash.setColorAt(0, theme.color(ThemeColor::primaryText, Metrics::cardWashOpacity));
    wash.setColorAt(1, theme.color(ThemeColor::primaryText, 0));
    painter.setBrush(wash);
    const double rest = Metrics::cardBorderOpacity;
    painter.setPen(theme.color(ThemeColor::border, rest + (1 - rest) * elevation()));
    painter.drawRoundedRect(frame, Metrics::cardRadius, Metrics::cardRadius);
}

void ReportSurface::enterEvent(QEnterEvent*) {
    elevation_->animateTo(1, Metrics::hoverMilliseconds, QEasingCurve::OutQuad);
}

void ReportSurface::leaveEvent(QEvent*) {
    elevation_->animateTo(0, Metrics::hoverMilliseconds, QEasingCurve::OutQuad);
}

void ReportSurface::moveEvent(QMoveEvent*) {
    if (elevation() > 0) updateShadow();
}

void ReportSurface::updateShadow() {
    update();
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto* canvas = qobject_cast<ShadowCanvas*>(above)) {
            canvas->updateShadow(this);
            return;
        }
    }
}

} // namespace loadscope
