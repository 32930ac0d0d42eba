// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

namespace loadscope {

class IconView;
class ValueAnimation;

/// A header that shows or hides what is below it. Its chevron turns while it is expanded. What it carries
/// between its edges is laid out by its user.
class DisclosureButton : public QAbstractButton {
    Q_OBJECT

public:
    enum class ChevronSide { leading, trailing };

    /// `body` is the header's content, not the content shown and hidden.
    DisclosureButton(const QString& title, QWidget* body, ChevronSide side, QWidget* parent = nullptr);

    [[nodiscard]] bool isExpanded() const { return expanded_; }
    void setExpanded(bool expanded);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void expandedChanged(bool expanded);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// 0: towards the end of the line, 1: down.
    void turnChevron(double turn);

    IconView* chevron_;
    ValueAnimation* turn_;
    bool expanded_ = false;
};

} // namespace loadscope
