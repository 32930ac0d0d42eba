// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/Findable.h"
#include "LoadscopeApp/Tables/DataTable.h"

namespace loadscope {

/// A table of a report. The row under the pointer, or reached with the arrow keys, is highlighted. Names can
/// be selected with the mouse, by a double click as a whole where the row is no file; Copy takes the
/// selection or else the name of the active row.
class ReportTable : public DataTable, public Findable {
    Q_OBJECT

public:
    ReportTable(TableColumns columns, std::vector<TableRow> rows, const QString& name,
                QWidget* parent = nullptr);

    [[nodiscard]] Selected selected(std::size_t row) const override;
    [[nodiscard]] QString selectedText() const override;

    QWidget& findWidget() override { return *this; }
    void findRows(const QString& wanted) override { find(wanted); }
    [[nodiscard]] std::size_t findableCount() const override { return rows().size(); }
    [[nodiscard]] std::size_t foundCount() const override { return arrangement().matchCount(); }
    [[nodiscard]] QRect firstFound() const override;
    void goToFound() override;

protected:
    void selectFrom(std::size_t row, QPointF point) override;
    void selectTo(std::size_t row, QPointF point) override;
    void clearSelection() override { selection_.reset(); }
    [[nodiscard]] QString copiedText() const override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    struct Selection {
        std::size_t row = 0;
        int from = 0; ///< where the mouse went down, in what is shown of the name
        int to = 0;
    };

    [[nodiscard]] int cursorAt(std::size_t row, QPointF point) const;
    void select(const Selection& selection);
    [[nodiscard]] Item firstFoundStop() const;

    std::optional<Selection> selection_;
};

} // namespace loadscope
