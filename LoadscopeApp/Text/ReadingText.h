// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QString>

class QPainter;

/// Texts of any language in a window of any direction: the direction of the window says at which edge a text
/// stands, its own first letter in which order it reads. An English sentence in a mirrored window so keeps
/// its full stop at its end.
namespace loadscope::ReadingText {

/// Paints with the painter's font and pen. `flags` are those of `QPainter::drawText`; leading and trailing
/// mean the painter's layout direction, or the application's when the painter has none.
void draw(QPainter& painter, const QRectF& area, int flags, const QString& text);

/// Paints one line with its baseline starting, on the left in every direction, at `origin`.
void draw(QPainter& painter, const QPointF& origin, const QString& text);

/// As long as it lives the painter lays texts out in the direction of `text`.
class Direction {
public:
    Direction(QPainter& painter, const QString& text, int flags = 0);
    ~Direction();
    Direction(const Direction&) = delete;
    Direction& operator=(const Direction&) = delete;

    /// The flags with leading and trailing made left and right as they were meant.
    [[nodiscard]] int flags() const { return flags_; }

private:
    QPainter& painter_;
    Qt::LayoutDirection before_;
    int flags_;
};

} // namespace loadscope::ReadingText
