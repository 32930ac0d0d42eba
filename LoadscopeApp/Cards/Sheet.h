// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>

namespace loadscope {

class ValueAnimation;

/// A modal sheet inside the window: dims `backdrop`, which is disabled for as long as the sheet is up, and
/// shows `content` on a card in the middle. Escape dismisses it. When it has gone it tells so, gives the
/// keyboard back to the widget that had it, and deletes itself.
class Sheet : public QWidget {
    Q_OBJECT

public:
    static constexpr int presentMilliseconds = 220;
    static constexpr int dismissMilliseconds = 160;
    static constexpr int reducedDismissMilliseconds = 100;

    /// Covers `window`; takes over `content`. `name` is what assistive technologies call it.
    Sheet(QWidget* window, QWidget* backdrop, QWidget* content, const QString& name);
    ~Sheet() override;

    /// Shows it and gives the keyboard to `focus`.
    void present(QWidget* focus);
    /// Fades it out, then closes; repeated calls are harmless.
    void dismiss();
    [[nodiscard]] bool isDismissing() const { return dismissing_; }

Q_SIGNALS:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeCard();
    void showCard();
    /// Gives the backdrop and the keyboard back, or leaves both to a sheet that has come above.
    void finish();
    [[nodiscard]] Sheet* openAbove() const;

    QPointer<QWidget> backdrop_;
    QWidget* card_;
    QPointer<QWidget> focusBefore_;
    QPointer<QWidget> focus_;
    QPixmap picture_;
    ValueAnimation* progress_;
    bool dismissing_ = false;
};

} // namespace loadscope
