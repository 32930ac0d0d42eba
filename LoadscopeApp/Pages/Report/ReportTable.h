// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeApp/Pages/Report/ReportTableLayout.h"

class QTextLayout;

namespace loadscope {

/// A table of a report, painted as a whole: thousands of rows cost no widgets. The row under the pointer, or
/// reached with the arrow keys, is highlighted. Names can be selected with the mouse; Copy takes the
/// selection or else the name of the active row. A name too long for its lines is whole in its tool tip.
class ReportTable : public MarkedWidget {
    Q_OBJECT

public:
    ReportTable(ReportTableTitles titles, std::vector<ReportTableRow> rows, const QString& name,
                QWidget* parent = nullptr);

    [[nodiscard]] const std::vector<ReportTableRow>& rows() const { return rows_; }
    [[nodiscard]] QRect rowArea(std::size_t row) const;
    [[nodiscard]] QString selectedText() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int markCount() const override;
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override;

Q_SIGNALS:
    void menuRequested(std::size_t row, const QPoint& globalPosition);

protected:
    bool event(QEvent* event) override;
    [[nodiscard]] std::size_t stopCount() const override { return rows_.size(); }
    [[nodiscard]] Item itemAt(QPointF point) const override { return layout_.rowAt(point.y()); }
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Selection {
        std::size_t row = 0;
        int from = 0; ///< where the mouse went down, in what is shown of the name
        int to = 0;
    };

    /// Measures the texts when they are first needed: a collapsed section never needs them.
    void measure() const;
    [[nodiscard]] std::size_t columns() const;
    [[nodiscard]] QRectF cell(std::size_t row, ReportTableLayout::Column column) const;
    [[nodiscard]] QString cellText(std::size_t row, ReportTableLayout::Column column) const;
    [[nodiscard]] QRectF mirrored(const QRectF& area) const;
    void shapeLine(QTextLayout& layout, double width) const;
    [[nodiscard]] int cursorAt(std::size_t row, QPointF point) const;
    void select(const Selection& selection);
    void copy() const;
    void paintHeader(QPainter& painter) const;
    void paintRow(QPainter& painter, std::size_t row) const;
    void paintName(QPainter& painter, std::size_t row) const;
    void paintLines(QPainter& painter, const BrokenText& text, const QRectF& box,
                    const Selection* selection = nullptr) const;
    void paintNumber(QPainter& painter, std::size_t row, ReportTableLayout::Column column) const;

    ReportTableTitles titles_;
    std::vector<ReportTableRow> rows_;
    mutable bool isMeasured_ = false;
    mutable ReportTableLayout layout_;
    std::optional<Selection> selection_;
};

} // namespace loadscope
