// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QPainter;
class QRectF;
class QWidget;

namespace loadscope {

/// Lets the one short text that a widget paints itself be selected, as a whole: with the mouse, for as long
/// as the widget has the keyboard. The key for Copy then copies all of the text, also what is cut on screen.
/// The widget paints the selection.
class WholeSelection : public QObject {
    Q_OBJECT

public:
    /// Belongs to `widget`.
    WholeSelection(QWidget* widget, std::function<QString()> text);

    [[nodiscard]] bool isSelected() const { return isSelected_; }
    /// Lays the colour of a selection over `area`.
    static void paint(QPainter& painter, const QRectF& area, double radius);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void select(bool selected);

    QWidget* widget_;
    std::function<QString()> text_;
    bool isSelected_ = false;
};

} // namespace loadscope
