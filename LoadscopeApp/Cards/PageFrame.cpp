// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/PageFrame.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Cards/CenteredColumn.h"
#include "LoadscopeApp/Cards/ShadowCanvas.h"
#include "LoadscopeApp/Motion/PageAppear.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QVBoxLayout>

namespace loadscope {

PageFrame::PageFrame(QWidget* parent)
    : QScrollArea(parent), middle_(new CenteredColumn(Metrics::blockSpacing)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::NoFocus);

    middle_->setWidest(Metrics::pageMaximumWidth - 2 * Metrics::pageMargin);
    middle_->setContentsMargins(Metrics::pageMargin, Metrics::pageMargin, Metrics::pageMargin,
                                Metrics::pageMargin);
    auto* canvas = new ShadowCanvas;
    canvas->setLayout(middle_);
    setWidget(canvas);
    canvas->setAutoFillBackground(false);
}

QVBoxLayout* PageFrame::column() const { return middle_->column(); }

void PageFrame::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (hasAppeared_) return;
    hasAppeared_ = true;
    PageAppear::start(this);
}

PageHeader::PageHeader(const QString& title, const QString& subtitle, QWidget* parent)
    : QWidget(parent), subtitle_(new TextLabel(subtitle, TextStyle::body, ThemeColor::secondaryText)) {
    auto* heading = new TextLabel(title, TextStyle::largeTitle);
    AccessibleTraits::setRole(heading, QAccessible::Heading, title);
    subtitle_->setWraps();
    subtitle_->setSelectable();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(4);
    rows->addWidget(heading);
    rows->addWidget(subtitle_);
}

void PageHeader::setSubtitle(const QString& subtitle) { subtitle_->setText(subtitle); }

} // namespace loadscope
