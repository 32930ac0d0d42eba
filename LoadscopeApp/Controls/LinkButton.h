// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QUrl>

namespace loadscope {

/// A link to a page of documentation, opened by the desktop's browser.
class LinkButton : public QAbstractButton {
    Q_OBJECT

public:
    LinkButton(const QString& title, QUrl target, QWidget* parent = nullptr);

    [[nodiscard]] const QUrl& target() const { return target_; }

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QUrl target_;
};

} // namespace loadscope
