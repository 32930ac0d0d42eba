// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/CodexCard.h"

#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Pages/Report/MetricLine.h"
#include "LoadscopeApp/Pages/Report/ToolLabel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

CodexCard::CodexCard(const CodexScanOutcome& outcome, QWidget* parent) : ReportSurface(parent) {
    content()->addWidget(new ToolLabel(DisplayText::own(CodexPresentation::toolName)));
    if (const CodexProbeResult* result = outcome.result()) {
        showResult(*result);
        if (const auto note = CodexPresentation::note(outcome)) addLine(DisplayText::own(*note));
    } else {
        auto* reason = new SelectableText(DisplayText::paragraphs(*outcome.reason()));
        reason->setAccessibleName(DisplayText::own(CodexPresentation::toolName));
        content()->addWidget(reason);
    }
    content()->addStretch(1);
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

void CodexCard::addLine(const QString& text) {
    auto* label = new TextLabel(text, TextStyle::body, ThemeColor::secondaryText);
    label->setWraps();
    content()->addWidget(label);
}

} // namespace loadscope
