// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeApp/Tables/RowArrangement.h"
#include "LoadscopeApp/Tables/TableLayout.h"

namespace loadscope {

class TableHeader;

/// Names with numbers beside them, painted as a whole and only where they can be seen: thousands of rows cost
/// no widgets. Some of the rows can be left out, and all stand in any order: an item is a row of those that
/// the table was made of, a stop of the arrow keys one that is shown. A row with others of a deeper level
/// behind it opens to them: by its chevron, with Return, or with the arrow keys. A name too long for its
/// lines is whole in its tool tip. What the mouse selects is for the tables on top of this to say; Copy takes
/// it.
///
/// A table that can be sorted is so by a click on the title of a column, by Up from its first row and then
/// Return, or by the action of the title's mark. Its order is kept for the next table of the same name, as
/// long as the program runs. Its titles stay in view while the page is scrolled.
class DataTable : public MarkedWidget {
    Q_OBJECT

public:
    /// What of a row is selected.
    struct Selected {
        bool isWhole = false;
        int from = 0; ///< else a piece of what is shown of its name
        int to = 0;
    };

    [[nodiscard]] const TableColumns& columns() const { return columns_; }
    [[nodiscard]] const std::vector<TableRow>& rows() const { return rows_; }
    [[nodiscard]] const TableLayout& places() const { return places_; }
    /// Shows these of the rows, in this order.
    void showRows(std::vector<std::size_t> rows);

    /// A row that opens; nothing for another.
    void setOpen(std::size_t row, bool open);
    [[nodiscard]] const RowOutline& outline() const { return outline_; }
    [[nodiscard]] const RowArrangement& arrangement() const { return arrangement_; }

    /// Lets the user put the rows in order. `name` is what the order is kept by.
    void setSortable(const QString& name);
    /// Forgets the orders that were kept.
    static void forgetSorts();
    /// Puts the rows in order, or back as they were given.
    void setSort(std::optional<TableSort> sort);
    /// The title at this place from side to side, in a table that can be sorted; and a click on it.
    [[nodiscard]] Item titleAt(double x) const;
    void sortAt(double x);
    /// The title that the keyboard is on.
    [[nodiscard]] Item activeTitle() const { return activeTitle_; }
    /// Shows only what has this text in its name, with what it stands below. An empty text shows all.
    void find(const QString& wanted);

    /// Where a row is; empty for one that is not shown.
    [[nodiscard]] QRect rowArea(std::size_t row) const;
    [[nodiscard]] QRectF cell(std::size_t row, std::size_t column) const;
    [[nodiscard]] QRectF headerCell(std::size_t column) const;
    [[nodiscard]] virtual Selected selected(std::size_t row) const = 0;
    [[nodiscard]] virtual QString selectedText() const = 0;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int markCount() const override;
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override;
    [[nodiscard]] Item itemOf(std::size_t mark) const override;
    [[nodiscard]] MarkSubject subject(std::size_t item) const override;
    void describeMark(int mark, QAccessible::State& state) const override;
    [[nodiscard]] bool canToggleMark(int mark) const override;
    void toggleMark(int mark) override;
    [[nodiscard]] int currentMark() const override;
    [[nodiscard]] bool canOpenMark(int mark) const override;
    void openMark(int mark) override;

Q_SIGNALS:
    void openChanged(std::size_t row, bool open);

protected:
    DataTable(QAccessible::Role role, TableColumns columns, std::vector<TableRow> rows, TableStyle style,
              QWidget* parent);

    /// The mouse went down on a row, and moved on while it was down; `row` is the one nearest to it.
    virtual void selectFrom(std::size_t row, QPointF point) = 0;
    virtual void selectTo(std::size_t row, QPointF point) = 0;
    /// The rows that are shown became others: what was selected is so no more.
    virtual void clearSelection() = 0;
    /// What Copy takes.
    [[nodiscard]] virtual QString copiedText() const { return selectedText(); }
    /// What is shown of a row's name.
    [[nodiscard]] BrokenText shownName(std::size_t row) const;
    [[nodiscard]] Item rowAt(QPointF point) const;

    bool event(QEvent* event) override;
    [[nodiscard]] std::size_t stopCount() const override { return places_.shown().size(); }
    [[nodiscard]] std::size_t itemAtStop(std::size_t stop) const override { return places_.shown()[stop]; }
    [[nodiscard]] Item stopOf(std::size_t item) const override { return places_.positionOf(item); }
    [[nodiscard]] Item itemAt(QPointF point) const override { return rowAt(point); }
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    [[nodiscard]] int roomAbove() const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Measures the texts when they are first needed: a collapsed section never needs them.
    void measure() const;
    /// How a column is sorted, as it is read out behind its title.
    [[nodiscard]] QString sortText(std::size_t column) const;
    [[nodiscard]] QRectF mirrored(const QRectF& area) const;
    /// The row of which this mark is the name, when it opens.
    [[nodiscard]] Item openingRowOf(int mark) const;
    [[nodiscard]] bool isOnChevron(std::size_t row, QPointF point) const;
    /// What Left and Right do: they open, close, and go to what is above. Whether they did anything.
    bool walkOutline(bool inward);
    /// What the keys do while a title has the keyboard, and Up on the first row. Whether they did anything.
    bool walkTitles(const QKeyEvent& event);
    void setActiveTitle(Item title);
    void rearrange();

    TableColumns columns_;
    std::vector<TableRow> rows_;
    RowOutline outline_;
    RowArrangement arrangement_;
    QString sortName_; ///< empty for a table that cannot be sorted
    Item activeTitle_;
    TableHeader* header_ = nullptr;
    mutable bool isMeasured_ = false;
    mutable TableLayout places_;
};

} // namespace loadscope
