// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/ChartPicture.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr double margin = 20;
constexpr double gap = 12;
constexpr double usualScale = 2;
constexpr double tallest = 16'000; ///< pixels
constexpr int pixelsPerInch = 96;  ///< of style sheets, so that a browser shows a picture in its own size

double titleHeight() { return QFontMetricsF(AppTheme::current().font(TextStyle::headline)).height(); }

} // namespace

QSizeF ChartPicture::size() const {
    const double width = std::max(chart.size.width(), legend.size.width()) + 2 * margin;
    const double legendHeight = legend.size.height() > 0 ? gap + legend.size.height() : 0;
    return {std::ceil(width),
            std::ceil(2 * margin + titleHeight() + gap + chart.size.height() + legendHeight)};
}

void ChartPicture::paint(QPainter& painter) const {
    const AppTheme& theme = AppTheme::current();
    const QSizeF whole = size();
    painter.fillRect(QRectF({0, 0}, whole), theme.color(ThemeColor::card));
    painter.setFont(theme.font(TextStyle::headline));
    painter.setPen(theme.color(ThemeColor::primaryText));
    painter.drawText(
        QRectF(margin, margin, whole.width() - 2 * margin, titleHeight()),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(painter.font()).elidedText(title, Qt::ElideRight, whole.width() - 2 * margin));
    const auto place = [&painter](const Part& part, double top) {
        painter.save();
        painter.translate(margin, top);
        part.paint(painter);
        painter.restore();
    };
    const double chartTop = margin + titleHeight() + gap;
    place(chart, chartTop);
    if (legend.size.height() > 0) place(legend, chartTop + chart.size.height() + gap);
}

QByteArray ChartPicture::png() const {
    const QSizeF whole = size();
    const double scale = std::min(usualScale, tallest / std::max(whole.height(), whole.width()));
    QImage image((whole * scale).toSize().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return {};
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    paint(painter);
    painter.end();
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    image.save(&file, "PNG");
    return file.data();
}

QByteArray ChartPicture::svg() const {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setTitle(title);
    generator.setResolution(pixelsPerInch);
    generator.setSize(size().toSize());
    generator.setViewBox(QRectF({0, 0}, size()));
    QPainter painter(&generator);
    paint(painter);
    painter.end();
    return file.data();
}

} // namespace loadscope
