// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class TipCard;

/// The card beside the mark that is active. It stays inside its parent, however long its texts are.
class ChartTip : public QWidget {
    Q_OBJECT

public:
    explicit ChartTip(QWidget* parent);

    [[nodiscard]] const QString& title() const { return title_; }
    [[nodiscard]] const QString& detail() const { return detail_; }

    /// Shows a title over its detail near `place` of the parent.
    void showAt(QPointF place, const QString& title, const QString& detail);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TipCard card(double room) const;

    QString title_;
    QString detail_;
};

} // namespace loadscope
