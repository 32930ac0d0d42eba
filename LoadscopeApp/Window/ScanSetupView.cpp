// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/ScanSetupView.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/DisclosureButton.h"
#include "LoadscopeApp/Controls/LinkButton.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/ToggleSwitch.h"
#include "LoadscopeApp/Motion/CollapsibleBody.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Window/ModelPicker.h"
#include "LoadscopeApp/Window/ReadinessRow.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Scan/ScanModel.h"
#include "LoadscopeCore/ToolRun/ProbeEnvironment.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int rowSpacing = 6;
const QString claudeGuide = QStringLiteral("https://docs.claude.com/en/docs/claude-code/setup");
const QString codexGuide = QStringLiteral("https://developers.openai.com/codex/cli");

} // namespace

ScanSetupView::ScanSetupView(ReadinessModel& readiness, ScanModel& model, QWidget* parent)
    : QWidget(parent),
      readiness_(readiness),
      model_(model),
      claude_(new ReadinessRow(QStringLiteral("Claude"))),
      codex_(new ReadinessRow(QStringLiteral("Codex"))),
      removedSignIn_(TextLabel::note({})),
      includeCodex_(new ToggleSwitch(QStringLiteral("Include Codex"))),
      modelPicker_(new ModelPicker),
      waitsForServers_(new ToggleSwitch(QStringLiteral("Wait for slow servers"))),
      recheck_(new PushButton(PushButton::Kind::secondary, QStringLiteral("Recheck setup"))) {
    PlainToolTip::set(*includeCodex_, QStringLiteral("Runs a real Codex session and uses Codex allowance."));
    PlainToolTip::set(*waitsForServers_,
                      QStringLiteral("Lets Claude Code wait a few seconds for servers that start slowly, so "
                                     "that they are counted."));
    recheck_->setFillsWidth();

    const QString helpTitle = QStringLiteral("Setup help");
    auto* helpLabel = new TextLabel(helpTitle, TextStyle::body, ThemeColor::secondaryText);
    AccessibleTraits::setDecoration(helpLabel); // the button says it
    auto* help = new DisclosureButton(helpTitle, helpLabel, DisclosureButton::ChevronSide::leading);
    auto* helpBody = new CollapsibleBody(makeHelp(), rowSpacing);
    connect(help, &DisclosureButton::expandedChanged, helpBody, &CollapsibleBody::setOpen);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(claude_);
    column->addWidget(removedSignIn_);
    column->addSpacing(rowSpacing);
    column->addWidget(codex_);
    column->addSpacing(rowSpacing);
    column->addWidget(includeCodex_);
    column->addSpacing(rowSpacing);
    column->addWidget(help);
    column->addWidget(helpBody);
    column->addSpacing(rowSpacing + 2);
    column->addWidget(recheck_);

    connectSettings();
    connect(recheck_, &QPushButton::clicked, this, [this] { readiness_.recheck(); });
    subscription_ = readiness_.observe([this] { updateReadiness(); });
    updateReadiness();
    updateScan();
}

void ScanSetupView::connectSettings() {
    connect(includeCodex_, &QCheckBox::toggled, this, [this](bool on) { model_.setIncludeCodex(on); });
    connect(modelPicker_, &ModelPicker::chosen, this, [this](const QString& model) {
        ProbeSettings settings = model_.probeSettings();
        settings.model = model.toStdString();
        model_.setProbeSettings(std::move(settings));
    });
    connect(waitsForServers_, &QCheckBox::toggled, this, [this](bool on) {
        ProbeSettings settings = model_.probeSettings();
        settings.waitsForServers = on;
        model_.setProbeSettings(std::move(settings));
    });
}

QWidget* ScanSetupView::makeHelp() {
    auto* help = new QWidget;
    auto* column = new QVBoxLayout(help);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(rowSpacing);
    column->addWidget(TextLabel::note(QStringLiteral(
        "Install and sign in through each tool, then recheck here. Status checks do not run a scan. Signed "
        "in does not guarantee available allowance.")));
    column->addWidget(new LinkButton(QStringLiteral("Claude installation and sign-in"), QUrl(claudeGuide)));
    column->addWidget(new LinkButton(QStringLiteral("Codex installation and sign-in"), QUrl(codexGuide)));
    column->addWidget(
        TextLabel::note(QStringLiteral("If status is unknown, you can still try a scan; any problem will "
                                       "be shown with recovery guidance.")));
    column->addWidget(
        TextLabel::note(QStringLiteral("A folder's own hooks and servers run in a scan, without a trust "
                                       "question of the tool.")));
    column->addSpacing(rowSpacing);
    column->addWidget(modelPicker_);
    column->addWidget(waitsForServers_);
    return help;
}

void ScanSetupView::updateReadiness() {
    claude_->setReadiness(readiness_.claude());
    codex_->setReadiness(readiness_.codex());
    std::optional<std::string> removed;
    if (readiness_.claude() == ToolReadiness::signedOut)
        removed = ConditionsPresentation::removedSignInNote(
            ProbeEnvironment::removedSignInVariables(UserFolders::environment()));
    removedSignIn_->setText(DisplayText::line(removed.value_or("")));
    removedSignIn_->setVisible(removed.has_value());
    const bool checking = readiness_.isChecking();
    recheck_->setTitle(checking ? QStringLiteral("Checking…") : QStringLiteral("Recheck setup"));
    recheck_->setAvailable(!checking);
}

void ScanSetupView::updateScan() {
    const bool changeable = !model_.state().isScanning();
    includeCodex_->setChecked(model_.includeCodex());
    includeCodex_->setEnabled(changeable);
    modelPicker_->setModel(QString::fromStdString(model_.probeSettings().model));
    modelPicker_->setChangeable(changeable);
    waitsForServers_->setChecked(model_.probeSettings().waitsForServers);
    waitsForServers_->setEnabled(changeable);
}

} // namespace loadscope
