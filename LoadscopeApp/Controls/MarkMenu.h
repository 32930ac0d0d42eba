// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QString>

#include <string>

class QContextMenuEvent;
class QMenu;
class QWidget;

namespace loadscope {

/// What a row, a tile or a bar stands for.
struct MarkSubject {
    QString name;
    QString number;     ///< as it is shown beside the name
    std::string path{}; ///< of its file or folder, as it is; empty for what has none
    bool isFolder = false;
};

/// The menu that every row, tile and bar has. What does not apply to one stands in it all the same, disabled:
/// every entry is where it was the last time.
namespace MarkMenu {

/// Shows it; `owner` is the widget that paints the mark. The menu deletes itself.
QMenu* popup(QWidget* owner, const MarkSubject& subject, QPoint globalPosition);

/// Opens the file of a mark; a failure is told beside `globalPosition`.
void open(QWidget* owner, const MarkSubject& subject, QPoint globalPosition);

/// Where a menu goes: at the pointer, or over the middle of `area` for one that a key asked for.
[[nodiscard]] QPoint place(const QWidget& owner, const QContextMenuEvent& event, const QRect& area);

} // namespace MarkMenu
} // namespace loadscope
