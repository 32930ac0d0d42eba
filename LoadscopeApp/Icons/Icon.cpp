// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Icons/Icon.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QVariantAnimation>

#include <cmath>

// Must stand outside any namespace: it refers to a global function of the compiled resources.
static void registerIcons() { Q_INIT_RESOURCE(LoadscopeIcons); }

namespace loadscope {
namespace {

constexpr int turnMilliseconds = 1600;
constexpr double fullTurn = 360;

QPixmap rendered(const QString& key, int pixels, const QColor& color) {
    static const bool registered = (registerIcons(), true);
    Q_UNUSED(registered)
    const QString cacheKey = QStringLiteral("icon:%1:%2:%3").arg(key).arg(pixels).arg(color.rgba(), 8, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap)) return pixmap;
    QSvgRenderer renderer(QStringLiteral(":/loadscope/Icons/%1.svg").arg(key));
    if (!renderer.isValid()) return {};
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    pixmap = QPixmap::fromImage(image);
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}

} // namespace

void Icon::paint(QPainter& painter, const QRectF& area, const QString& key, const QColor& color) {
    const double ratio = painter.device()->devicePixelRatioF();
    const int pixels = static_cast<int>(std::ceil(area.width() * ratio));
    if (pixels <= 0) return;
    QPixmap pixmap = rendered(key, pixels, color);
    if (pixmap.isNull()) return;
    pixmap.setDevicePixelRatio(ratio);
    painter.drawPixmap(area.topLeft(), pixmap);
}

IconView::IconView(const QString& key, int size, ThemeColor color, QWidget* parent)
    : QWidget(parent), key_(key), size_(size), color_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    AppTheme::bind(this, [this] {
        updateGeometry();
        updateSpin();
        update();
    });
}

void IconView::setColor(ThemeColor color) {
    color_ = color;
    update();
}

void IconView::setRotation(double degrees) {
    rotation_ = degrees;
    update();
}

void IconView::setSpinning(bool spinning) {
    spinning_ = spinning;
    updateSpin();
}

void IconView::updateSpin() {
    const bool turns = spinning_ && isVisible() && !AppTheme::current().reducedMotion();
    if (turns == (spin_ != nullptr)) return;
    if (!turns) {
        delete spin_;
        spin_ = nullptr;
        setRotation(0);
        return;
    }
    spin_ = new QVariantAnimation(this);
    spin_->setStartValue(0.0);
    spin_->setEndValue(fullTurn);
    spin_->setDuration(turnMilliseconds);
    spin_->setLoopCount(-1);
    connect(spin_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setRotation(value.toDouble()); });
    spin_->start();
}

QSize IconView::sizeHint() const {
    const int side = AppTheme::current().scaled(size_);
    return {side, side};
}

void IconView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double side = sizeHint().width();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, rotation_ != 0);
    painter.translate(QRectF(rect()).center());
    painter.rotate(rotation_);
    Icon::paint(painter, QRectF(-side / 2, -side / 2, side, side), key_, AppTheme::current().color(color_));
}

void IconView::showEvent(QShowEvent*) { updateSpin(); }

void IconView::hideEvent(QHideEvent*) { updateSpin(); }

} // namespace loadscope
