// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class PushButton;

/// The keys of the window, each with what it does.
class ShortcutList : public QWidget {
    Q_OBJECT

public:
    explicit ShortcutList(QWidget* parent = nullptr);

    [[nodiscard]] PushButton* closeButton() const { return close_; }

private:
    PushButton* close_;
};

} // namespace loadscope
