// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Pages/Overview/OverviewReport.h"
#include "tests/LoadscopeApp/Support/SampleReports.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>

namespace loadscope::testing {

/// The report page by itself, with everything expanded.
class ReportPage {
public:
    explicit ReportPage(ScanReport report, QSize size = {930, 780})
        : report(std::make_shared<const ScanReport>(std::move(report))), page(this->report) {
        for (auto* section : page.findChildren<CollapsibleSection*>())
            section->setExpanded(true);
        page.resize(size);
        page.show();
        settle();
    }

    /// Lets the nested layouts come to rest.
    static void settle() {
        for (int round = 0; round < 6; ++round)
            QApplication::processEvents();
    }

    template <typename Widget>
    [[nodiscard]] Widget* find(const QString& name = {}) const {
        for (auto* widget : page.findChildren<Widget*>()) {
            if (name.isEmpty() || widget->accessibleName() == name) return widget;
        }
        return nullptr;
    }

    /// Everything that assistive technologies are told, in their order.
    [[nodiscard]] QStringList said() {
        QStringList texts;
        collect(QAccessible::queryAccessibleInterface(&page), texts);
        return texts;
    }

    static void hover(QWidget* widget, QPointF place) {
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }

    std::shared_ptr<const ScanReport> report;
    OverviewReport page;

private:
    static void collect(QAccessibleInterface* element, QStringList& texts) {
        if (element == nullptr || !element->isValid() || element->state().invisible) return;
        for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Value}) {
            if (!element->text(kind).isEmpty()) texts += element->text(kind).split(QLatin1Char('\n'));
        }
        for (int index = 0; index < element->childCount(); ++index)
            collect(element->child(index), texts);
    }
};

} // namespace loadscope::testing
