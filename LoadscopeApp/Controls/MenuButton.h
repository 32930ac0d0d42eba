// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/PushButton.h"

#include <functional>

class QAction;
class QMenu;

namespace loadscope {

/// A button that offers a few choices in a menu below it.
class MenuButton : public PushButton {
    Q_OBJECT

public:
    MenuButton(Kind kind, const QString& title, QWidget* parent = nullptr);

    QAction* addChoice(const QString& title, std::function<void()> chosen);
    [[nodiscard]] QMenu* choices() const { return menu_; }

private:
    QMenu* menu_;
};

} // namespace loadscope
