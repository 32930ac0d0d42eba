// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QWidget>

class QHBoxLayout;

namespace loadscope {

class Sheet;
struct Notice;

/// A short message with its buttons, shown as a sheet over the window of whoever asks. Texts are plain text
/// and may come from outside once they are made visible.
class AlertPanel : public QWidget {
    Q_OBJECT

public:
    AlertPanel(const QString& symbol, ThemeColor tint, const QString& title, const QString& message);

    [[nodiscard]] const QString& title() const { return title_; }
    /// From the leading to the trailing edge, in the order of the calls.
    PushButton* addButton(PushButton::Kind kind, const QString& title);

    /// Shows `panel` over the window of `anchor` and gives the keyboard to `focus`. Each of its buttons
    /// closes it, and so does Escape. Null when `anchor` is not within a window.
    static Sheet* present(QWidget* anchor, AlertPanel* panel, PushButton* focus);
    /// The child of the window in which `anchor` lies, or null: it lasts as long as the window.
    [[nodiscard]] static QWidget* backdropOf(QWidget* anchor);
    /// A message with nothing to decide.
    static Sheet* tell(QWidget* anchor, const Notice& notice);

private:
    QString title_;
    QHBoxLayout* buttons_;
};

} // namespace loadscope
