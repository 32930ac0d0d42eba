// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/TransitionCover.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"

namespace loadscope {

TransitionCover::TransitionCover(QWidget* covered)
    : QWidget(covered), progress_(new ValueAnimation(this, 0, [this](double) { step(); })) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    AccessibleTraits::setDecoration(this);
    setGeometry(covered->rect());
    raise();
    show();
    connect(progress_, &QVariantAnimation::finished, this, [this] {
        hide();
        deleteLater();
    });
}

double TransitionCover::progress() const { return progress_->value(); }

} // namespace loadscope
