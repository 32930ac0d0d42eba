// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/PageFrame.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeApp/Motion/PageAppear.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int eagerness = 1000;

} // namespace

PageFrame::PageFrame(QWidget* parent) : QScrollArea(parent), column_(new QVBoxLayout) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setFocusPolicy(Qt::NoFocus);

    auto* middle = new QWidget;
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(Metrics::blockSpacing);
    middle->setLayout(column_);
    middle->setMaximumWidth(Metrics::pageMaximumWidth - 2 * Metrics::pageMargin);
    auto* canvas = new ShadowCanvas;
    auto* row = new QHBoxLayout(canvas);
    row->setContentsMargins(Metrics::pageMargin, Metrics::pageMargin, Metrics::pageMargin,
                            Metrics::pageMargin);
    row->setSpacing(0);
    row->addStretch(1);
    row->addWidget(middle, eagerness);
    row->addStretch(1);
    setWidget(canvas);
    canvas->setAutoFillBackground(false);
}

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
