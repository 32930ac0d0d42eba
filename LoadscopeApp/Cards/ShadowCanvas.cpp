// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/ShadowCanvas.h"

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QPainter>
#include <QPixmapCache>
#include <qdrawutil.h>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

/// Distance of a point from a rounded rectangle, negative inside.
double distance(QPointF point, const QRectF& area, double radius) {
    const QPointF fromCenter = point - area.center();
    const double x = std::abs(fromCenter.x()) - area.width() / 2 + radius;
    const double y = std::abs(fromCenter.y()) - area.height() / 2 + radius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
}

/// A small shadow whose middle can be stretched to any size.
QPixmap stretchable(int cornerRadius, int blurRadius, double ratio, QRgb color) {
    const QString key =
        QStringLiteral("shadow:%1:%2:%3:%4").arg(cornerRadius).arg(blurRadius).arg(ratio).arg(color);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    const int side = 2 * (cornerRadius + 2 * blurRadius) + 2;
    const QRectF area(blurRadius, blurRadius, side - 2 * blurRadius, side - 2 * blurRadius);
    const int pixels = static_cast<int>(std::ceil(side * ratio));
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    const double softness = blurRadius / 2.0;
    for (int y = 0; y < pixels; ++y) {
        for (int x = 0; x < pixels; ++x) {
            const double away = distance({(x + 0.5) / ratio, (y + 0.5) / ratio}, area, cornerRadius);
            const double cover = 0.5 * std::erfc(away / (softness * std::sqrt(2.0)));
            image.setPixel(
                x, y,
                qRgba(qRed(color), qGreen(color), qBlue(color), static_cast<int>(std::lround(cover * 255))));
        }
    }
    pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QRect shadowArea(const QRect& card) {
    const int reach = Metrics::cardShadowRadius;
    return card.adjusted(-reach, -reach, reach, reach + reach / 3 + 1);
}

} // namespace

void CardShadow::paint(QPainter& painter, const QRectF& area, double cornerRadius, double blurRadius,
                       double opacity) {
    const int blur = static_cast<int>(blurRadius);
    const int corner = static_cast<int>(cornerRadius);
    const double ratio = painter.device()->devicePixelRatioF();
    const QPixmap shadow =
        stretchable(corner, blur, ratio, AppTheme::current().color(ThemeColor::shadow).rgb());
    const int edge = static_cast<int>((corner + 2 * blur) * ratio);
    const int reach = blur;
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    // In pixels of the device, because the nine pieces of the pixmap are cut in pixels.
    const QRect target =
        area.translated(0, blurRadius / 3).toAlignedRect().adjusted(-reach, -reach, reach, reach);
    QPixmap plain = shadow;
    plain.setDevicePixelRatio(1);
    painter.scale(1 / ratio, 1 / ratio);
    const QRect scaled(qRound(target.x() * ratio), qRound(target.y() * ratio), qRound(target.width() * ratio),
                       qRound(target.height() * ratio));
    qDrawBorderPixmap(&painter, scaled, QMargins(edge, edge, edge, edge), plain);
    painter.restore();
}

void ShadowCanvas::updateShadow(const ReportSurface* card) {
    update(shadowArea(QRect(card->mapTo(this, QPoint(0, 0)), card->size())));
}

void ShadowCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const ReportSurface* card : findChildren<ReportSurface*>()) {
        if (card->elevation() <= 0 || !card->isVisibleTo(this)) continue;
        const QRectF area(card->mapTo(this, QPoint(0, 0)), card->size());
        CardShadow::paint(painter, area, Metrics::cardRadius, Metrics::cardShadowRadius,
                          Metrics::cardShadowOpacity * card->elevation());
    }
}

} // namespace loadscope
