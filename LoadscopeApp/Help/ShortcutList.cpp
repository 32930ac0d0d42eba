// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Help/ShortcutList.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Presentation/HelpTexts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QScrollArea>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int inset = 20;
constexpr int usualWidth = 520;
constexpr int tallest = 420;
constexpr int columnGap = 20;
constexpr int lineGap = 8;

QString keysText(const HelpTexts::Shortcut& shortcut) {
    QStringList keys;
    for (const std::string_view key : shortcut.keys)
        keys << QKeySequence(DisplayText::own(key)).toString(QKeySequence::NativeText);
    return keys.join(QStringLiteral(", "));
}

} // namespace

ShortcutList::ShortcutList(QWidget* parent)
    : QWidget(parent), close_(new PushButton(PushButton::Kind::primary, QStringLiteral("OK"))) {
    auto* list = new QWidget;
    AccessibleTraits::setRole(list, QAccessible::List, QStringLiteral("Keyboard shortcuts"));
    auto* grid = new QGridLayout(list);
    grid->setContentsMargins(0, 0, columnGap, 0);
    grid->setHorizontalSpacing(columnGap);
    grid->setVerticalSpacing(lineGap);
    grid->setColumnStretch(1, 1);
    for (const HelpTexts::Shortcut& shortcut : HelpTexts::shortcuts()) {
        const int row = grid->rowCount();
        auto* action = new TextLabel(DisplayText::own(shortcut.action), TextStyle::body);
        action->setWraps();
        grid->addWidget(new TextLabel(keysText(shortcut), TextStyle::body, ThemeColor::secondaryText), row, 0,
                        Qt::AlignLeading | Qt::AlignTop);
        grid->addWidget(action, row, 1);
    }
    auto* area = new QScrollArea;
    area->setWidget(list);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(inset, inset, inset, inset);
    column->setSpacing(inset);
    column->addWidget(TextLabel::heading(QStringLiteral("Keyboard shortcuts"), TextStyle::headline,
                                         ThemeColor::primaryText));
    column->addWidget(area, 1);
    column->addLayout(buttons);
    AppTheme::bind(this, [this] {
        const int scaled = AppTheme::current().scaled(usualWidth);
        setFixedWidth(usualWidth + (scaled - usualWidth) / 2);
        setFixedHeight(tallest);
    });
}

} // namespace loadscope
