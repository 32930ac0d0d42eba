// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class ValueAnimation;

/// Holds a content that slides open and shut. Shut, it takes no space and its content is hidden from
/// everybody.
class CollapsibleBody : public QWidget {
    Q_OBJECT

public:
    /// `gap` is the space above the content while it is open.
    CollapsibleBody(QWidget* content, int gap, QWidget* parent = nullptr);

    void setOpen(bool open);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] int contentHeight(int width) const;
    void layOut();

    QWidget* content_;
    int gap_;
    ValueAnimation* openness_;
};

} // namespace loadscope
