// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Motion/TransitionCover.h"

#include <QPixmap>

namespace loadscope {

/// The way in which a page comes into view: it fades in and rises a little.
class PageAppear : public TransitionCover {
    Q_OBJECT

public:
    /// Lets `page` appear; at once where motion is unwelcome.
    static void start(QWidget* page);

protected:
    void paintEvent(QPaintEvent* event) override;
    void step() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit PageAppear(QWidget* page);

    QWidget* page_;
    QPixmap picture_;
};

} // namespace loadscope
