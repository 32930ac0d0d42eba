// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class QWidget;

/// Tool tips that never take a text for markup.
namespace loadscope::PlainToolTip {

/// Gives the widget `text` as its tool tip and as its accessible description.
void set(QWidget& widget, const QString& text);

/// Shows `text` as it is, wrapped; hides the tip when it is empty.
void show(const QPoint& globalPosition, const QString& text, QWidget* widget);

/// `text` in the form in which a tool tip of the toolkit shows it as it is.
[[nodiscard]] QString escaped(const QString& text);

} // namespace loadscope::PlainToolTip
