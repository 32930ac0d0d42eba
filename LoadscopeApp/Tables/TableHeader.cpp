// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/TableHeader.h"

#include "LoadscopeApp/Tables/DataTable.h"
#include "LoadscopeApp/Tables/TablePainter.h"
#include "LoadscopeApp/Theme/AppTheme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace loadscope {

TableHeader::TableHeader(DataTable& table) : QWidget(&table), table_(table) {
    setMouseTracking(true);
    hide();
}

void TableHeader::follow() {
    if (!page_) {
        for (QWidget* above = table_.parentWidget(); above != nullptr && !page_;
             above = above->parentWidget())
            page_ = qobject_cast<QScrollArea*>(above);
        if (page_) connect(page_->verticalScrollBar(), &QScrollBar::valueChanged, this, &TableHeader::place);
    }
    place();
}

void TableHeader::place() {
    if (!page_ || !table_.isVisible() || !page_->isAncestorOf(&table_)) {
        hide();
        return;
    }
    const int top = table_.mapFrom(page_->viewport(), QPoint()).y();
    const int own = static_cast<int>(std::ceil(table_.places().headerHeight()));
    // It leaves with the last row: where less is left than itself, nothing needs titles.
    const bool isNeeded = top > 0 && top < table_.height() - 2 * own;
    if (isNeeded) {
        setGeometry(0, top, table_.width(), own);
        raise();
    }
    setVisible(isNeeded);
}

void TableHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), AppTheme::current().color(ThemeColor::card));
    TablePainter(painter, table_).paintHeader();
}

void TableHeader::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) table_.sortAt(event->position().x());
}

void TableHeader::mouseMoveEvent(QMouseEvent* event) {
    setCursor(table_.titleAt(event->position().x()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

} // namespace loadscope
