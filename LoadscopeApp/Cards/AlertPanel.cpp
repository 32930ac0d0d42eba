// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/AlertPanel.h"

#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Icons/StateIcon.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/SelectableText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/Notices.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int inset = 24;
constexpr int spacing = 16;
constexpr int panelWidth = 460;
constexpr int tallestMessage = 260;

} // namespace

AlertPanel::AlertPanel(const QString& symbol, ThemeColor tint, const QString& title, const QString& message)
    : title_(title), buttons_(new QHBoxLayout) {
    setFixedWidth(panelWidth);
    auto* heading = new TextLabel(title, TextStyle::headline);
    heading->setWraps();
    auto* text = new SelectableText(message, TextStyle::body, ThemeColor::secondaryText);
    text->setHeightLimit(tallestMessage);
    text->setFocusPolicy(Qt::ClickFocus);
    auto* words = new QVBoxLayout;
    words->setSpacing(8);
    words->addWidget(heading);
    words->addWidget(text);
    words->addStretch();
    auto* top = new QHBoxLayout;
    top->setSpacing(spacing);
    top->addWidget(new StateIcon(symbol, tint), 0, Qt::AlignTop);
    top->addLayout(words, 1);
    buttons_->setSpacing(8);
    buttons_->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(inset, inset, inset, inset);
    column->setSpacing(spacing);
    column->addLayout(top);
    column->addLayout(buttons_);
}

PushButton* AlertPanel::addButton(PushButton::Kind kind, const QString& title) {
    auto* button = new PushButton(kind, title);
    buttons_->addWidget(button);
    return button;
}

QWidget* AlertPanel::backdropOf(QWidget* anchor) {
    QWidget* backdrop = anchor;
    while (backdrop != nullptr && backdrop->parentWidget() != anchor->window())
        backdrop = backdrop->parentWidget();
    return backdrop;
}

Sheet* AlertPanel::present(QWidget* anchor, AlertPanel* panel, PushButton* focus) {
    QWidget* backdrop = backdropOf(anchor);
    if (backdrop == nullptr) {
        delete panel;
        return nullptr;
    }
    auto* sheet = new Sheet(anchor->window(), backdrop, panel, panel->title());
    for (auto* button : panel->findChildren<PushButton*>())
        QObject::connect(button, &PushButton::clicked, sheet, &Sheet::dismiss);
    sheet->present(focus);
    return sheet;
}

Sheet* AlertPanel::tell(QWidget* anchor, const Notice& notice) {
    auto* panel = new AlertPanel(QStringLiteral("exclamationmark.triangle"), ThemeColor::bandHeavy,
                                 DisplayText::own(notice.title), DisplayText::line(notice.message));
    PushButton* close = panel->addButton(PushButton::Kind::primary, QStringLiteral("OK"));
    return present(anchor, panel, close);
}

} // namespace loadscope
