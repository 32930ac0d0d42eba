// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

class QScrollArea;

namespace loadscope {

class DataTable;

/// The titles of a table's columns once more, at the upper edge of what can be seen of the table while its
/// own titles have been scrolled away. Assistive technologies know only the table's own.
class TableHeader : public QWidget {
    Q_OBJECT

public:
    explicit TableHeader(DataTable& table);

    /// Finds the page that scrolls the table, and goes where it has to be.
    void follow();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void place();

    DataTable& table_;
    QPointer<QScrollArea> page_;
};

} // namespace loadscope
