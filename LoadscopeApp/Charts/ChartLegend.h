// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <vector>

namespace loadscope {

/// Names the series of a chart in their colours, in as many lines as it takes. A name is cut only when it is
/// wider than the whole legend.
class ChartLegend : public QWidget {
    Q_OBJECT

public:
    struct Entry {
        QString label;
        std::size_t paletteIndex = 0;
    };

    explicit ChartLegend(QWidget* parent = nullptr);

    void setEntries(std::vector<Entry> entries);
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

    /// Where the entries stand in a legend of this width; the last one ends at the legend's height.
    [[nodiscard]] std::vector<QRectF> entryAreas(double width) const;
    void paint(QPainter& painter, double width) const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    std::vector<Entry> entries_;
};

} // namespace loadscope
