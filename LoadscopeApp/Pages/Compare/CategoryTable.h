// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/DataTable.h"

#include <utility>

namespace loadscope {

/// The categories of a column of Compare, one line each. Lines are selected with the mouse or the keyboard
/// and copied as text. Assistive technologies read each line as one.
class CategoryTable : public DataTable {
    Q_OBJECT

public:
    struct Line {
        QString name;
        QString number;
    };

    explicit CategoryTable(const std::vector<Line>& lines, QWidget* parent = nullptr);

    [[nodiscard]] Selected selected(std::size_t row) const override;
    /// The selected lines, or all where none is, with a tab between name and number.
    [[nodiscard]] QString selectedText() const override;

    [[nodiscard]] int markCount() const override { return static_cast<int>(rows().size()); }
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override { return item; }
    [[nodiscard]] Item itemOf(std::size_t mark) const override { return mark; }

    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void selectFrom(std::size_t row, QPointF) override { select(row, row); }
    void selectTo(std::size_t row, QPointF) override;
    void clearSelection() override;
    [[nodiscard]] std::size_t stopCount() const override { return 0; }
    [[nodiscard]] Item itemAt(QPointF) const override { return {}; }
    [[nodiscard]] Item menuItemAt(QPointF point) const override { return rowAt(point); }
    [[nodiscard]] Item menuItem() const override { return selection_ ? Item(selection_->second) : Item(); }
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void select(std::size_t first, std::size_t last);

    std::optional<std::pair<std::size_t, std::size_t>> selection_; ///< where it began and where it is now
};

} // namespace loadscope
