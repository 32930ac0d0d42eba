// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Help/HelpButton.h"

#include "LoadscopeApp/Cards/AlertPanel.h"
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Help/GuideView.h"
#include "LoadscopeApp/Help/ShortcutList.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/HelpTexts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

namespace loadscope {
namespace {

/// Shows `panel` over the window of `anchor`; its `close` button, and Escape, take it away.
template <typename Panel>
void present(QWidget* anchor, Panel* panel, const QString& name) {
    auto* sheet = new Sheet(anchor->window(), AlertPanel::backdropOf(anchor), panel, name);
    QObject::connect(panel->closeButton(), &QPushButton::clicked, sheet, &Sheet::dismiss);
    sheet->present(panel->closeButton());
}

} // namespace

HelpButton::HelpButton(QWidget* parent) : PushButton(Kind::plain, QStringLiteral("Help"), parent) {
    auto* choices = new QMenu(this);
    choices->addAction(QStringLiteral("Keyboard Shortcuts"), this,
                       [this] { HelpSheets::showShortcuts(this); });
    choices->addAction(QStringLiteral("Walkthrough"), this, &HelpButton::walkthroughRequested);
    choices->addAction(QStringLiteral("Guide"), this, [this] { HelpSheets::showGuide(this); });
    choices->addSeparator();
    choices->addAction(QStringLiteral("About Loadscope"), this, [this] { HelpSheets::showAbout(this); });
    setMenu(choices);
}

void HelpSheets::showShortcuts(QWidget* anchor) {
    present(anchor, new ShortcutList, QStringLiteral("Keyboard shortcuts"));
}

void HelpSheets::showGuide(QWidget* anchor) { present(anchor, new GuideView, QStringLiteral("Guide")); }

void HelpSheets::showAbout(QWidget* anchor) {
    const QString versions = DisplayText::own(HelpTexts::versions(qVersion()));
    auto* panel = new AlertPanel(QStringLiteral("waveform.path.ecg"), ThemeColor::accent,
                                 DisplayText::own(HelpTexts::aboutTitle()), versions);
    PushButton* copy = panel->addButton(PushButton::Kind::secondary, QStringLiteral("Copy"));
    PushButton* close = panel->addButton(PushButton::Kind::primary, QStringLiteral("OK"));
    QObject::connect(copy, &QPushButton::clicked, panel,
                     [versions] { QGuiApplication::clipboard()->setText(versions); });
    AlertPanel::present(anchor, panel, close);
}

} // namespace loadscope
