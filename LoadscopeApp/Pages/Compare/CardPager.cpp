// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CardPager.h"

#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <QHBoxLayout>

namespace loadscope {

CardPager::CardPager(QWidget* parent)
    : QWidget(parent),
      previous_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Previous"))),
      next_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Next"))),
      place_(new TextLabel({}, TextStyle::body, ThemeColor::secondaryText)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(place_, 1);
    row->addWidget(previous_);
    row->addWidget(next_);
    connect(previous_, &QAbstractButton::clicked, this, [this] { Q_EMIT pageRequested(page_ - 1); });
    connect(next_, &QAbstractButton::clicked, this, [this] { Q_EMIT pageRequested(page_ + 1); });
}

void CardPager::refresh(const ComparePresentation& shown) {
    page_ = shown.page();
    place_->setText(DisplayText::own(shown.pageText()));
    previous_->setAvailable(page_ > 0);
    next_->setAvailable(page_ + 1 < shown.pageCount());
    setVisible(shown.pageCount() > 1);
}

} // namespace loadscope
