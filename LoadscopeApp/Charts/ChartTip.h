// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

/// The small card beside the mark that the pointer is over. It stays inside the chart, however long its
/// texts are: they break anywhere, and what still does not fit is cut in its middle.
class ChartTip : public QWidget {
    Q_OBJECT

public:
    explicit ChartTip(QWidget* chart);

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& detail() const { return detail_; }

    /// Shows a title over one line of detail near `place` of the chart.
    void showAt(QPointF place, const QString& title, const QString& detail);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString title_;
    QString detail_;
    QString shownTitle_;
};

} // namespace loadscope
