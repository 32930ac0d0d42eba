// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Window/AppPage.h"

#include <QRadioButton>

#include <array>

namespace loadscope {

/// One page in the sidebar: an icon and a title; the selected one stands on a tinted row.
class PageButton : public QRadioButton {
    Q_OBJECT

public:
    explicit PageButton(AppPage page, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

private:
    AppPage page_;
};

/// The pages of the window, one of them selected.
class PageList : public QWidget {
    Q_OBJECT

public:
    explicit PageList(QWidget* parent = nullptr);

    void select(AppPage page);

Q_SIGNALS:
    void selected(loadscope::AppPage page);

private:
    std::array<PageButton*, allAppPages.size()> buttons_{};
};

} // namespace loadscope
