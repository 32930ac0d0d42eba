// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QString>

#include <cstddef>

class QWidget;

namespace loadscope {

/// A list whose rows can be looked for by their names. Whoever looks finds it among the widgets of a page.
class Findable {
public:
    virtual ~Findable() = default;

    [[nodiscard]] virtual QWidget& findWidget() = 0;
    /// Shows only the rows with this text in their names, without regard to case; an empty text shows all. At
    /// once when it is the same as before.
    virtual void findRows(const QString& wanted) = 0;
    [[nodiscard]] virtual std::size_t findableCount() const = 0;
    /// How many rows have what was looked for last: all when that was nothing.
    [[nodiscard]] virtual std::size_t foundCount() const = 0;
    /// Where the first of them is, in the widget.
    [[nodiscard]] virtual QRect firstFound() const = 0;
    /// Gives the first of them the keyboard.
    virtual void goToFound() = 0;
};

} // namespace loadscope
