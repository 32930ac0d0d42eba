// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/MenuButton.h"

#include "LoadscopeApp/AppTheme.h"

#include <QMenu>

namespace loadscope {

MenuButton::MenuButton(Kind kind, const QString& title, QWidget* parent)
    : PushButton(kind, title, parent), menu_(new QMenu(this)) {
    AppTheme::bind(this, [this] {
        menu_->setPalette(AppTheme::current().palette());
        menu_->setFont(AppTheme::current().font(TextStyle::body));
    });
    connect(this, &QPushButton::clicked, this,
            [this] { menu_->popup(mapToGlobal(QPoint(0, height() + 2))); });
}

void MenuButton::addChoice(const QString& title, std::function<void()> chosen) {
    connect(menu_->addAction(title), &QAction::triggered, this, std::move(chosen));
}

} // namespace loadscope
