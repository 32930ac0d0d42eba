// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/CollapsibleBody.h"

#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QEvent>
#include <QLayout>

#include <cmath>

namespace loadscope {

CollapsibleBody::CollapsibleBody(QWidget* content, int gap, QWidget* parent)
    : QWidget(parent), content_(content), gap_(gap), openness_(new ValueAnimation(this, 0, [this](double) {
          setVisible(openness_->value() > 0);
          updateGeometry();
      })) {
    content_->setParent(this);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void CollapsibleBody::setOpen(bool open) {
    const bool onScreen = parentWidget() != nullptr && parentWidget()->isVisible();
    if (onScreen)
        openness_->animateTo(open ? 1 : 0, Metrics::collapseMilliseconds);
    else
        openness_->jumpTo(open ? 1 : 0);
}

int CollapsibleBody::contentHeight(int width) const {
    return content_->hasHeightForWidth() || (content_->layout() && content_->layout()->hasHeightForWidth())
               ? content_->heightForWidth(width)
               : content_->sizeHint().height();
}

int CollapsibleBody::heightForWidth(int width) const {
    return static_cast<int>(std::lround((contentHeight(width) + gap_) * openness_->value()));
}

QSize CollapsibleBody::sizeHint() const {
    const int width = content_->sizeHint().width();
    return {width, heightForWidth(this->width() > 0 && isVisible() ? this->width() : width)};
}

QSize CollapsibleBody::minimumSizeHint() const { return {content_->minimumSizeHint().width(), 0}; }

void CollapsibleBody::resizeEvent(QResizeEvent*) { layOut(); }

bool CollapsibleBody::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        layOut();
    }
    return QWidget::event(event);
}

void CollapsibleBody::layOut() {
    const int height = contentHeight(width());
    // Slides in from below its header.
    content_->setGeometry(0, this->height() - height, width(), height);
}

} // namespace loadscope
