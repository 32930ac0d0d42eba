// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Comparison/SinceLine.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Motion/CollapsibleBody.h"
#include "LoadscopeApp/Pages/Comparison/ComparisonTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

SinceLine::SinceLine(const ScanComparison& comparison, QWidget* parent) : QWidget(parent) {
    const QString text = DisplayText::line(DiffPresentation::sinceLine(comparison));
    auto* label = new TextLabel(text, TextStyle::body, ThemeColor::primaryText);
    label->setWraps();
    AccessibleTraits::setDecoration(label); // the button says it
    auto* header = new DisclosureButton(text, label, DisclosureButton::ChevronSide::leading);
    auto* body = new CollapsibleBody(new ComparisonTable(comparison), 8);
    connect(header, &DisclosureButton::expandedChanged, body, &CollapsibleBody::setOpen);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(body);
}

} // namespace loadscope
