// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/FindBar.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Controls/Findable.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/TextField.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Presentation/FindTexts.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStackedWidget>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int inset = 8;
constexpr int sideInset = 20;
constexpr int widestField = 320;
constexpr int layoutRounds = 6;

} // namespace

FindBar::FindBar(QStackedWidget* pages, QWidget* area)
    : QWidget(area),
      pages_(pages),
      field_(new TextField(DisplayText::own(FindTexts::purpose))),
      count_(new TextLabel({}, TextStyle::body, ThemeColor::secondaryText)) {
    AccessibleTraits::setRole(this, QAccessible::ToolBar, DisplayText::own(FindTexts::purpose));
    auto* done = new PushButton(PushButton::Kind::secondary, QStringLiteral("Done"));
    done->setAccessibleDescription(DisplayText::own(FindTexts::close));
    field_->setMaximumWidth(widestField);
    field_->setClearButtonEnabled(false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(sideInset, inset, sideInset, inset);
    row->setSpacing(inset);
    row->addWidget(field_, 1);
    row->addWidget(count_, 0, Qt::AlignVCenter);
    row->addStretch();
    row->addWidget(done);
    field_->installEventFilter(this);
    area->installEventFilter(this); // what the lists leave of the keys
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &FindBar::apply);
    connect(field_, &QLineEdit::textChanged, this, [this] {
        apply();
        showFound();
    });
    connect(done, &QAbstractButton::clicked, this, &FindBar::close);
    connect(pages_, &QStackedWidget::currentChanged, this, &FindBar::close);
    AppTheme::bind(this, [this] { update(); });
    hide();
}

void FindBar::open() {
    if (!isVisible()) before_ = QApplication::focusWidget();
    show();
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
    apply();
}

void FindBar::close() {
    if (!isVisibleTo(parentWidget())) return;
    field_->clear();
    // Of every page: the one that was searched may not be the one on screen any more.
    for (QWidget* widget : pages_->findChildren<QWidget*>())
        if (auto* list = dynamic_cast<Findable*>(widget)) list->findRows({});
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus && before_ && before_->isVisible()) before_->setFocus(Qt::OtherFocusReason);
}

std::vector<Findable*> FindBar::lists() const {
    std::vector<Findable*> found;
    QWidget* page = pages_->currentWidget();
    if (page == nullptr) return found;
    for (QWidget* widget : page->findChildren<QWidget*>()) {
        auto* list = dynamic_cast<Findable*>(widget);
        if (list != nullptr && list->findWidget().isVisibleTo(page)) found.push_back(list);
    }
    return found;
}

void FindBar::apply() {
    if (!isVisibleTo(parentWidget())) return;
    for (auto* frame : pages_->currentWidget()->findChildren<QScrollArea*>())
        if (frame->widget() != nullptr) frame->widget()->installEventFilter(this);
    std::size_t found = 0;
    std::size_t rows = 0;
    for (Findable* list : lists()) {
        list->findRows(field_->text());
        found += list->foundCount();
        rows += list->findableCount();
    }
    count_->setText(DisplayText::own(FindTexts::count(found, rows)));
}

QScrollArea* FindBar::frameOf(const QWidget& list) {
    for (QWidget* above = list.parentWidget(); above != nullptr; above = above->parentWidget())
        if (auto* frame = qobject_cast<QScrollArea*>(above)) return frame;
    return nullptr;
}

void FindBar::showFound() {
    if (field_->text().isEmpty()) return;
    // A layout within a layout comes to rest after the one around it.
    for (int round = 0; round < layoutRounds; ++round)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QScrollArea* firstFrame = nullptr;
    QRect first;
    for (Findable* list : lists()) {
        QScrollArea* frame = frameOf(list->findWidget());
        if (list->foundCount() == 0 || frame == nullptr) continue;
        QRect row = list->firstFound();
        row.moveTopLeft(list->findWidget().mapTo(frame->widget(), row.topLeft()));
        if (row.translated(frame->widget()->pos()).intersects(frame->viewport()->rect())) return;
        if (firstFrame != nullptr) continue;
        firstFrame = frame;
        first = row;
    }
    if (firstFrame == nullptr) return;
    const int above = firstFrame->viewport()->height() / 3; // with what it stands below
    firstFrame->ensureVisible(0, first.center().y(), 0,
                              std::min(first.height() / 2 + above, firstFrame->viewport()->height() / 2));
}

void FindBar::goToFound() {
    for (Findable* list : lists()) {
        if (list->foundCount() == 0) continue;
        list->goToFound();
        return;
    }
}

bool FindBar::takesKey(QEvent& event) {
    const int key = static_cast<QKeyEvent&>(event).key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (key != Qt::Key_Escape && key != Qt::Key_Down && !isEnter) return false;
    if (event.type() == QEvent::ShortcutOverride) {
        event.accept(); // here it neither stops a scan nor starts one
        return false;
    }
    if (key == Qt::Key_Escape)
        close();
    else
        goToFound();
    return true;
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched == field_) return isKey && takesKey(*event);
    if (watched == parentWidget()) {
        const bool isEscape =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        if (!isEscape || !isVisible()) return false;
        close();
        return true;
    }
    if (event->type() == QEvent::LayoutRequest && isVisible() && !field_->text().isEmpty()) again_.start(0);
    return false;
}

void FindBar::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.fillRect(rect(), theme.color(ThemeColor::card));
    painter.fillRect(QRect(0, height() - 1, width(), 1), theme.color(ThemeColor::divider));
}

} // namespace loadscope
