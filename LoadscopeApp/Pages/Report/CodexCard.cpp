// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/CodexCard.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Motion/CollapsibleBody.h"
#include "LoadscopeApp/Pages/Report/CodexItemsTable.h"
#include "LoadscopeApp/Pages/Report/MetricLine.h"
#include "LoadscopeApp/Pages/Report/ToolLabel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QApplication>
#include <QVBoxLayout>

namespace loadscope {

namespace {

TextLabel* wrapping(const std::string& text, TextStyle style) {
    auto* label = new TextLabel(DisplayText::line(text), style, ThemeColor::secondaryText);
    label->setWraps();
    return label;
}

QVBoxLayout* columnIn(QWidget* widget) {
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    return column;
}

/// A line that opens to the items.
QWidget* itemsDisclosure(const CodexItemsView& items) {
    const QString title = DisplayText::own(CodexItemsPresentation::itemsTitle);
    auto* label = new TextLabel(title, TextStyle::body, ThemeColor::secondaryText);
    AccessibleTraits::setDecoration(label); // the button says it
    auto* header = new DisclosureButton(title, label, DisclosureButton::ChevronSide::leading);
    auto* body = new CollapsibleBody(new CodexItemsTable(items), 8);
    QObject::connect(header, &DisclosureButton::expandedChanged, body, &CollapsibleBody::setOpen);
    auto* part = new QWidget;
    QVBoxLayout* column = columnIn(part);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(body);
    return part;
}

} // namespace

CodexCard::CodexCard(const CodexScanOutcome& outcome, QWidget* parent) : ReportSurface(parent) {
    content()->addWidget(new ToolLabel(DisplayText::own(CodexPresentation::toolName)));
    if (const CodexProbeResult* result = outcome.result()) {
        showResult(*result);
        if (const auto note = CodexPresentation::note(outcome)) addLine(DisplayText::own(*note));
        if (const auto items = CodexItemsPresentation::ofMeasurement(outcome))
            content()->addWidget(itemsDisclosure(*items));
    } else {
        auto* reason = new SelectableText(DisplayText::paragraphs(*outcome.reason()));
        reason->setAccessibleName(DisplayText::own(CodexPresentation::toolName));
        content()->addWidget(reason);
        canBeEstimated_ = *outcome.reason() == CodexScanOutcome::notIncludedReason;
    }
    content()->addStretch(1);
}

void CodexCard::showEstimate(const Estimate& estimate) {
    if (!canBeEstimated_ || estimate == estimate_) return;
    const bool hadFocus =
        estimatePart_ != nullptr && estimatePart_->isAncestorOf(QApplication::focusWidget());
    estimate_ = estimate;
    delete estimatePart_;
    estimatePart_ = estimate.canAsk ? makeEstimate(estimate) : nullptr;
    if (estimatePart_ == nullptr) return;
    content()->insertWidget(content()->count() - 1, estimatePart_);
    ReadingOrder::follow(*this);
    estimatePart_->show();
    auto* button = estimatePart_->findChild<PushButton*>();
    if (hadFocus && button != nullptr) button->setFocus(Qt::OtherFocusReason);
}

QWidget* CodexCard::makeEstimate(const Estimate& estimate) {
    auto* part = new QWidget;
    QVBoxLayout* column = columnIn(part);
    if (estimate.isRunning)
        column->addWidget(wrapping(CodexItemsPresentation::estimateStage, TextStyle::body));
    if (estimate.items) {
        column->addWidget(wrapping(CodexItemsPresentation::estimateLine(*estimate.items), TextStyle::body));
        if (const auto model = CodexItemsPresentation::modelLine(*estimate.items))
            column->addWidget(wrapping(*model, TextStyle::caption));
        if (estimate.items->areTold())
            column->addWidget(wrapping(CodexItemsPresentation::estimateNote, TextStyle::caption));
        column->addWidget(itemsDisclosure(CodexItemsPresentation::ofEstimate(*estimate.items)));
    }
    auto* button =
        new PushButton(PushButton::Kind::secondary,
                       estimate.isRunning ? QStringLiteral("Cancel")
                                          : DisplayText::own(CodexItemsPresentation::estimateAction));
    button->setEnabled(!estimate.isCancelling);
    connect(button, &PushButton::clicked, this,
            estimate.isRunning ? &CodexCard::cancelRequested : &CodexCard::estimateRequested);
    column->addWidget(button, 0, Qt::AlignLeft);
    column->addWidget(wrapping(CodexItemsPresentation::serversNote, TextStyle::caption));
    return part;
}

void CodexCard::showResult(const CodexProbeResult& result) {
    content()->addWidget(
        new MetricLine(DisplayText::own(LocaleFormat::grouped(result.total)), TextStyle::largeTitle));
    const OpinionBand band = CodexPresentation::band(result);
    content()->addWidget(
        new StatusPill(DisplayText::own(OpinionBands::title(band)), {}, ThemeColors::text(band)));
    if (const auto share = CodexPresentation::windowShareLine(result)) addLine(DisplayText::own(*share));
    addLine(DisplayText::own(CodexPresentation::measurementNote));
}

void CodexCard::addLine(const QString& text) { content()->addWidget(TextLabel::note(text, TextStyle::body)); }

} // namespace loadscope
