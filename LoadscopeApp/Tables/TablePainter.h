// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Tables/DataTable.h"

class QPainter;
class QTextLayout;

namespace loadscope {

class AppTheme;

/// Paints a table: its header and those of its rows that an area shows.
class TablePainter {
public:
    TablePainter(QPainter& painter, const DataTable& table);

    void paint(const QRect& area);
    /// The titles alone, at the top.
    void paintHeader();

    /// Lays one line of a name out as it is painted.
    static void shape(QTextLayout& line, const DataTable& table, double width);

private:
    void paintSort(std::size_t column, Qt::Alignment side);
    void paintRow(std::size_t row);
    void paintChevron(std::size_t row, const QRectF& name);
    void paintDot(std::size_t row, const QRectF& name);
    void paintName(std::size_t row);
    void paintDetail(const QString& text, const QRectF& name);
    void paintLines(const BrokenText& text, const QRectF& box, const DataTable::Selected& selected = {});
    void paintNumber(const QString& text, const QRectF& box);
    void paintText(const QString& text, const QRectF& box);

    QPainter& painter_;
    const DataTable& table_;
    const TableLayout& places_;
    const AppTheme& theme_;
};

} // namespace loadscope
