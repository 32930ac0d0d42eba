// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/AccessibleMarks.h"

#include <QString>
#include <QWidget>

#include <optional>
#include <utility>
#include <vector>

namespace loadscope {

/// Names and numbers, one line each. Lines are selected with the mouse or the keyboard and copied as text.
/// It paints all of its lines itself: a page can hold hundreds of them.
class CategoryTable : public QWidget, public AccessibleMarks {
    Q_OBJECT

public:
    struct Line {
        QString name;
        QString number;
    };

    explicit CategoryTable(std::vector<Line> lines, QWidget* parent = nullptr);

    /// The selected lines, or all where none is, with a tab between name and number.
    [[nodiscard]] QString selectedText() const;

    [[nodiscard]] QAccessible::Role marksRole() const override { return QAccessible::List; }
    [[nodiscard]] int markCount() const override { return static_cast<int>(lines_.size()); }
    [[nodiscard]] QString markText(int mark) const override;
    [[nodiscard]] QRect markArea(int mark) const override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int lineAt(int y) const;
    void select(int first, int last);
    [[nodiscard]] QString text(std::size_t first, std::size_t last) const;

    std::vector<Line> lines_;
    std::optional<std::pair<int, int>> selection_; ///< where it began and where it is now
};

} // namespace loadscope
