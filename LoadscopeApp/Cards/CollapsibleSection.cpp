// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/CollapsibleSection.h"

#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Motion/CollapsibleBody.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QVBoxLayout>

#include <utility>

namespace loadscope {

namespace {

/// Its title is the name of the button that it lies in.
SectionHeader* header(const QString& title, const QString& detail) {
    auto* header = new SectionHeader(title, detail);
    header->silenceTitle();
    return header;
}

} // namespace

CollapsibleSection::CollapsibleSection(const QString& title, const QString& detail, QWidget* body,
                                       QWidget* parent)
    : ReportSurface(parent),
      header_(new DisclosureButton(title, header(title, detail), DisclosureButton::ChevronSide::trailing)),
      body_(new CollapsibleBody(body, Metrics::rowSpacing)) {
    header_->setMinimumHeight(Metrics::headerMinimumHeight);
    content()->setSpacing(0);
    content()->addWidget(header_);
    content()->addWidget(body_);
    connect(header_, &DisclosureButton::expandedChanged, this, [this](bool expanded) {
        if (const auto fill = std::exchange(fill_, nullptr)) {
            fill();
            ReadingOrder::follow(*this);
        }
        body_->setOpen(expanded);
    });
}

bool CollapsibleSection::isExpanded() const { return header_->isExpanded(); }

void CollapsibleSection::setExpanded(bool expanded) { header_->setExpanded(expanded); }

} // namespace loadscope
