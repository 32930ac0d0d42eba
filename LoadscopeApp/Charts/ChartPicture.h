// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>

#include <functional>

class QPainter;

namespace loadscope {

/// A chart as a file of its own: its title, the chart and its legend on a card's background, in the colours
/// that the window has at that moment.
struct ChartPicture {
    struct Part {
        QSizeF size;
        std::function<void(QPainter&)> paint; ///< paints from (0, 0) on
    };

    QString title;
    Part chart;
    Part legend;

    /// With two pixels per point, fewer for a chart that would become too tall for other programs.
    [[nodiscard]] QByteArray png() const;
    [[nodiscard]] QByteArray svg() const;

    [[nodiscard]] QSizeF size() const;
    void paint(QPainter& painter) const;
};

} // namespace loadscope
