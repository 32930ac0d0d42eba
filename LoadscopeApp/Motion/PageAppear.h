// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QWidget>

namespace loadscope {

class ValueAnimation;

/// The way in which a page comes into view: it fades in and rises a little. A picture of the page moves over
/// the page itself, so that nothing is laid out anew while it runs; the cover removes itself when it is done.
class PageAppear : public QWidget {
    Q_OBJECT

public:
    /// Lets `page` appear; at once where motion is unwelcome.
    static void start(QWidget* page);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit PageAppear(QWidget* page);
    void step();

    QWidget* page_;
    QPixmap picture_;
    ValueAnimation* progress_;
};

} // namespace loadscope
