// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/SidebarRepository.h"

#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int symbolSize = 17;

void showStatus(StatusPill& pill, const ScanState& state) {
    const QString words = DisplayText::own(state.label());
    if (state.isScanning())
        pill.setStatus(words, QStringLiteral("arrow.triangle.2.circlepath"), ThemeColor::accent);
    else if (state.error() != nullptr)
        pill.setStatus(words, QStringLiteral("exclamationmark.triangle.fill"), ThemeColor::bandExcessive);
    else if (state.report() != nullptr)
        pill.setStatus(words, QStringLiteral("checkmark.circle.fill"), ThemeColor::bandLean);
    else
        pill.setStatus(words, QStringLiteral("circle"), ThemeColor::secondaryText);
}

} // namespace

SidebarRepository::SidebarRepository(QWidget* parent)
    : QWidget(parent),
      name_(new ElidedLabel({}, TextStyle::headline)),
      noName_(new TextLabel(QStringLiteral("No repository selected"), TextStyle::headline)),
      path_(new SelectableText({}, TextStyle::caption, ThemeColor::secondaryText)),
      status_(new StatusPill({}, {}, ThemeColor::secondaryText)) {
    path_->setAccessibleName(QStringLiteral("Repository path"));
    name_->setElideMode(Qt::ElideMiddle);
    noName_->setWraps();

    auto* title = new QHBoxLayout;
    title->setSpacing(8);
    title->addWidget(new IconView(QStringLiteral("folder.fill"), symbolSize, ThemeColor::accent));
    title->addWidget(name_, 1);
    title->addWidget(noName_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(title);
    column->addWidget(path_);
    column->addWidget(status_, 0, Qt::AlignLeading);
    column->addWidget(TextLabel::note(DisplayText::own(ScanModel::allowanceDisclosure)));
    refresh({}, {});
}

void SidebarRepository::refresh(const std::optional<RepoSelection>& selection, const ScanState& state) {
    name_->setText(selection ? DisplayText::line(selection->displayName) : QString());
    name_->setVisible(selection.has_value());
    noName_->setVisible(!selection);
    path_->setText(selection ? DisplayText::line(selection->path)
                             : QStringLiteral("Choose a local repository to begin one scan."));
    showStatus(*status_, state);
}

} // namespace loadscope
