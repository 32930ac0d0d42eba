// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/Sheet.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Cards/ShadowCanvas.h"
#include "LoadscopeApp/Icons/Picture.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int rise = 14;
constexpr int edge = 24; ///< least distance of the card from the edges of the window
constexpr double shadowRadius = 28;
constexpr double shadowOpacity = 0.3;

/// The sheet's card: opaque, with a thin border.
class SheetCard : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        const AppTheme& theme = AppTheme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(theme.color(ThemeColor::card));
        painter.setPen(theme.color(ThemeColor::border));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Metrics::sheetRadius,
                                Metrics::sheetRadius);
    }
};

} // namespace

Sheet::Sheet(QWidget* window, QWidget* backdrop, QWidget* content, const QString& name)
    : QWidget(window),
      backdrop_(backdrop),
      card_(new SheetCard(this)),
      progress_(new ValueAnimation(this, 0, [this](double) { update(); })) {
    AccessibleTraits::setRole(this, QAccessible::Dialog, name);
    setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(card_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(content);
    card_->hide();
    hide();
    window->installEventFilter(this);
    connect(progress_, &QVariantAnimation::finished, this, [this] {
        if (dismissing_)
            finish();
        else
            showCard();
    });
    AppTheme::bind(this, [this] { QTimer::singleShot(0, this, [this] { placeCard(); }); });
}

Sheet::~Sheet() {
    if (backdrop_ != nullptr && !backdrop_->isEnabled()) backdrop_->setEnabled(true);
}

void Sheet::present(QWidget* focus) {
    focus_ = focus;
    focusBefore_ = QApplication::focusWidget();
    backdrop_->setEnabled(false);
    setGeometry(parentWidget()->rect());
    raise();
    show();
    placeCard();
    if (!AppTheme::current().reducedMotion()) picture_ = Picture::of(*card_);
    progress_->animateTo(1, presentMilliseconds, QEasingCurve::OutCubic);
}

void Sheet::showCard() {
    picture_ = {};
    card_->show();
    placeCard();
    if (focus_ != nullptr) focus_->setFocus(Qt::OtherFocusReason);
}

void Sheet::dismiss() {
    if (dismissing_) return;
    dismissing_ = true;
    if (AppTheme::current().reducedMotion()) {
        // Without movement; the pause is as long as the fade would be.
        QTimer::singleShot(reducedDismissMilliseconds, this, [this] { finish(); });
        return;
    }
    if (card_->isVisible()) picture_ = Picture::of(*card_);
    card_->hide();
    progress_->animateTo(0, dismissMilliseconds, QEasingCurve::InQuad);
}

void Sheet::finish() {
    hide();
    if (Sheet* other = openAbove()) {
        other->focusBefore_ = focusBefore_;
    } else {
        if (backdrop_ != nullptr) backdrop_->setEnabled(true);
        if (focusBefore_ != nullptr) focusBefore_->setFocus(Qt::OtherFocusReason);
    }
    backdrop_ = nullptr;
    Q_EMIT dismissed();
    deleteLater();
}

Sheet* Sheet::openAbove() const {
    for (Sheet* other : parentWidget()->findChildren<Sheet*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (other != this && other->backdrop_ == backdrop_ && !other->dismissing_) return other;
    }
    return nullptr;
}

void Sheet::placeCard() {
    const QSize space = size() - QSize(2 * edge, 2 * edge);
    const int width =
        std::min(space.width(), std::max(card_->minimumSizeHint().width(), card_->sizeHint().width()));
    int height = card_->layout()->hasHeightForWidth() ? card_->layout()->totalHeightForWidth(width)
                                                      : card_->sizeHint().height();
    height = std::min(height, space.height());
    card_->setGeometry((this->width() - width) / 2, (this->height() - height) / 2, width, height);
    update();
}

void Sheet::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const double progress = progress_->value();
    QPainter painter(this);
    QColor dim = theme.color(ThemeColor::dim);
    dim.setAlphaF(static_cast<float>(dim.alphaF() * progress));
    painter.fillRect(rect(), dim);
    QRectF area = card_->geometry();
    if (!picture_.isNull()) area.translate(0, rise * (1 - progress));
    CardShadow::paint(painter, area, Metrics::sheetRadius, shadowRadius, shadowOpacity * progress);
    if (!picture_.isNull()) {
        painter.setOpacity(progress);
        painter.drawPixmap(area.topLeft(), picture_);
    }
}

void Sheet::resizeEvent(QResizeEvent*) { placeCard(); }

void Sheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) dismiss();
    event->accept();
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

} // namespace loadscope
