// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QPushButton>

namespace loadscope {

/// A button in one of four looks, with an optional icon before its text.
class PushButton : public QPushButton {
    Q_OBJECT

public:
    enum class Kind { primary, secondary, plain, destructive };

    PushButton(Kind kind, const QString& title, QWidget* parent = nullptr);

    /// Changes the text and keeps the shortcut, which the toolkit would drop.
    void setTitle(const QString& title);
    /// Key of an icon shown before the text.
    void setSymbol(const QString& key);
    /// Enables or disables it for a while: when it has the keyboard, it keeps it.
    void setAvailable(bool available);
    /// Takes the width that it is given instead of its own.
    void setFillsWidth();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    struct Colors {
        QColor fill;
        QColor border;
        QColor text;
    };
    [[nodiscard]] Colors colors() const;
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] int horizontalInset() const;

    Kind kind_;
    QString symbol_;
    bool keepsKeyboard_ = false;
};

} // namespace loadscope
