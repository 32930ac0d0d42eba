// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <vector>

class QScrollArea;
class QStackedWidget;

namespace loadscope {

class Findable;
class TextField;
class TextLabel;

/// A line above a page in which to type what the rows of its lists are looked for by. All lists that are open
/// on the page show only the rows with that in their names; lists that are opened or made meanwhile join in.
/// Escape, or another page, ends the search and shows all again.
class FindBar : public QWidget {
    Q_OBJECT

public:
    /// Stands hidden in the layout of `area`, which holds `pages` too.
    FindBar(QStackedWidget* pages, QWidget* area);

    /// Shows it with the keyboard in it, and what was typed selected.
    void open();
    /// Hides it; the keyboard goes back to where it was.
    void close();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] std::vector<Findable*> lists() const;
    void apply();
    /// Scrolls to the first row that was found, unless one can be seen.
    void showFound();
    [[nodiscard]] static QScrollArea* frameOf(const QWidget& list);
    void goToFound();
    [[nodiscard]] bool takesKey(QEvent& event);

    QStackedWidget* pages_;
    TextField* field_;
    TextLabel* count_;
    QTimer again_; ///< looks once more after the page's layout has changed
    QPointer<QWidget> before_;
};

} // namespace loadscope
