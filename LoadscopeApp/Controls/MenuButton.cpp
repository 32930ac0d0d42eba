// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/MenuButton.h"

#include <QMenu>

namespace loadscope {

MenuButton::MenuButton(Kind kind, const QString& title, QWidget* parent)
    : PushButton(kind, title, parent), menu_(new QMenu(this)) {
    connect(this, &QPushButton::clicked, this,
            [this] { menu_->popup(mapToGlobal(QPoint(0, height() + 2))); });
}

QAction* MenuButton::addChoice(const QString& title, std::function<void()> chosen) {
    QAction* choice = menu_->addAction(title);
    connect(choice, &QAction::triggered, this, std::move(chosen));
    return choice;
}

} // namespace loadscope
