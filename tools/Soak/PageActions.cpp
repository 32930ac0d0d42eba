// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Actions.h"
#include "tools/Soak/Waiting.h"

#include "LoadscopeApp/Cards/CollapsibleSection.h"
#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QPixmap>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <array>

namespace loadscope::soak {
namespace {

template <typename Widget>
Widget* anyVisible(Stage& stage) {
    QList<Widget*> found;
    for (auto* widget : stage.view().template findChildren<Widget*>()) {
        if (widget->isVisible() && widget->isEnabled() && !widget->size().isEmpty()) found.append(widget);
    }
    return found.isEmpty() ? nullptr : stage.dice.pick(found);
}

QPoint placeIn(const QWidget& widget, Dice& dice) {
    return {dice.below(widget.width()), dice.below(widget.height())};
}

std::string nameOf(const QWidget& widget) {
    return std::string(widget.metaObject()->className()) + ' ' +
           widget.accessibleName().left(60).toStdString();
}

std::string pressButton(Stage& stage) {
    auto buttons = stage.window->buttons();
    if (buttons.empty()) return "no button";
    QAbstractButton* button = stage.dice.pick(buttons);
    const std::string title = button->text().toStdString();
    const std::string name = title.empty() ? button->accessibleName().toStdString() : title;
    if (stage.dice.oneIn(3)) {
        button->click();
    } else {
        QTest::mouseClick(button, Qt::LeftButton);
    }
    return name;
}

std::string hover(Stage& stage) {
    // A scan that ends under the pointer takes its page's chart with it.
    const QPointer<QWidget> chart(anyVisible<MarkedWidget>(stage));
    if (chart == nullptr) return "no chart";
    const std::string name = nameOf(*chart);
    for (int count = stage.dice.between(1, 8); count > 0 && chart; --count)
        QTest::mouseMove(chart, placeIn(*chart, stage.dice));
    if (chart && stage.dice.oneIn(4))
        QTest::mouseClick(chart, Qt::LeftButton, {}, placeIn(*chart, stage.dice));
    return name;
}

std::string chartKeys(Stage& stage) {
    auto* chart = anyVisible<MarkedWidget>(stage);
    if (chart == nullptr) return "no chart";
    const std::string name = nameOf(*chart);
    const std::array keys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,    Qt::Key_Down,
                          Qt::Key_Home, Qt::Key_End,   Qt::Key_Escape};
    const QPointer<QWidget> target(chart);
    chart->setFocus(Qt::TabFocusReason);
    for (int count = stage.dice.between(1, 12); count > 0 && target; --count)
        QTest::keyClick(target, stage.dice.pick(keys));
    return name;
}

std::string anyKeys(Stage& stage) {
    const std::array keys{Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape,
                          Qt::Key_Up,     Qt::Key_Down,    Qt::Key_Left,   Qt::Key_Right, Qt::Key_PageDown,
                          Qt::Key_PageUp, Qt::Key_Home,    Qt::Key_End,    Qt::Key_Tab,   Qt::Key_Tab,
                          Qt::Key_F10,    Qt::Key_Menu,    Qt::Key_A};
    std::string said;
    for (int count = stage.dice.between(1, 6); count > 0; --count) {
        QWidget* focus = QApplication::focusWidget();
        if (focus == nullptr || focus->window() != &stage.view()) focus = &stage.view();
        const Qt::Key key = stage.dice.pick(keys);
        said += QKeySequence(key).toString().toStdString() + ' ';
        QTest::keyClick(focus, key, stage.dice.oneIn(10) ? Qt::ShiftModifier : Qt::NoModifier);
    }
    return said;
}

std::string copy(Stage& stage) {
    QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || focus->window() != &stage.view()) focus = &stage.view();
    QTest::keyClick(focus, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &stage.view(),
                    Qt::Key_C, Qt::ControlModifier);
    return {};
}

std::string contextMenu(Stage& stage) {
    const bool ofMark = stage.dice.oneIn(2);
    QWidget* widget = ofMark ? anyVisible<MarkedWidget>(stage) : anyVisible<QWidget>(stage);
    if (widget == nullptr) return "no widget";
    const std::string name = nameOf(*widget);
    const QPoint place = placeIn(*widget, stage.dice);
    if (ofMark && stage.dice.oneIn(3)) {
        const QPointer<QWidget> target(widget);
        QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
        if (!target) return name;
    }
    QContextMenuEvent event(stage.dice.oneIn(3) ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse,
                            place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
    return name;
}

std::string find(Stage& stage) {
    QTest::keyClick(&stage.view(), Qt::Key_F, Qt::ControlModifier);
    const QPointer<QWidget> field(QApplication::focusWidget());
    const std::array texts{"a", "MCP", "CLAUDE", ".md", "no such name", "e"};
    const std::string text = stage.dice.pick(texts);
    if (field && field->inherits("QLineEdit")) QTest::keyClicks(field, QString::fromStdString(text));
    if (field && stage.dice.oneIn(2))
        QTest::keyClick(field, stage.dice.oneIn(2) ? Qt::Key_Return : Qt::Key_Escape);
    return text;
}

std::string sortTable(Stage& stage) {
    auto* table = anyVisible<ReportTable>(stage);
    if (table == nullptr) return "no table";
    const std::string name = nameOf(*table);
    if (stage.dice.oneIn(2)) {
        table->sortAt(stage.dice.below(table->width()));
    } else {
        table->setFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Up, Qt::Key_Right, Qt::Key_Return})
            QTest::keyClick(table, key);
    }
    return name;
}

std::string zoom(Stage& stage) {
    auto* tiles = anyVisible<MemberTreemapView>(stage);
    if (tiles == nullptr) return "no tiles";
    tiles->setFocus(Qt::TabFocusReason);
    const std::array keys{Qt::Key_Down, Qt::Key_Return, Qt::Key_Backspace};
    for (int count = stage.dice.between(1, 6); count > 0; --count) {
        if (stage.dice.oneIn(2))
            QTest::mouseClick(tiles, Qt::LeftButton, {}, placeIn(*tiles, stage.dice));
        else if (const Qt::Key key = stage.dice.pick(keys);
                 key != Qt::Key_Return || !tiles->active() || tiles->pathOf(*tiles->active()).empty())
            QTest::keyClick(tiles, key);
    }
    return tiles->treemap().steps(tiles->zoomed()).back();
}

std::string scroll(Stage& stage) {
    auto* widget = anyVisible<QWidget>(stage);
    if (widget == nullptr) return "no widget";
    const QPointF place = placeIn(*widget, stage.dice);
    const QPoint turn(0, (stage.dice.oneIn(2) ? 120 : -120) * stage.dice.between(1, 12));
    QWheelEvent event(place, widget->mapToGlobal(place), {}, turn, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    return {};
}

std::string expand(Stage& stage) {
    auto* section = anyVisible<CollapsibleSection>(stage);
    if (section == nullptr) return "no section";
    const bool opens = !stage.dice.oneIn(3);
    section->setExpanded(opens);
    return opens ? "open" : "closed";
}

std::string exportReport(Stage& stage) {
    const std::array names{"Export…", "Copy Summary", "Save Chart…"};
    for (int attempt = 0; attempt < 5; ++attempt) {
        const QString name = QString::fromUtf8(stage.dice.pick(names));
        auto* button = stage.window->button(name);
        if (button == nullptr) continue;
        button->click();
        runEvents(stage.dice.between(20, 200));
        return name.toStdString();
    }
    return "not offered";
}

std::string paint(Stage& stage) {
    const QPixmap picture = stage.view().grab();
    return std::to_string(picture.width()) + " by " + std::to_string(picture.height());
}

std::string dismissSheet(Stage& stage) {
    auto* sheet = stage.view().findChild<Sheet*>();
    if (sheet == nullptr) return "no sheet";
    if (stage.dice.oneIn(2)) {
        QTest::keyClick(sheet, Qt::Key_Escape);
    } else {
        sheet->dismiss();
    }
    return {};
}

} // namespace

const std::vector<Action>& pageActions() {
    static const std::vector<Action> all{
        {"press a button", 24, true, pressButton},
        {"hover over a chart", 10, true, hover},
        {"keys on a chart", 8, true, chartKeys},
        {"any keys", 8, true, anyKeys},
        {"copy", 3, true, copy},
        {"context menu", 4, true, contextMenu},
        {"zoom into tiles", 4, true, zoom},
        {"find", 4, true, find},
        {"sort a table", 3, true, sortTable},
        {"scroll", 5, true, scroll},
        {"expand a section", 8, true, expand},
        {"export or copy", 5, true, exportReport},
        {"paint", 3, false, paint},
        {"dismiss a sheet", 8, true, dismissSheet},
    };
    return all;
}

} // namespace loadscope::soak
