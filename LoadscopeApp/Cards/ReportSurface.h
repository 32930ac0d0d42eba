// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace loadscope {

class ValueAnimation;

/// A card. Its border and shadow come forward while the pointer is over it; the shadow falls on the nearest
/// `ShadowCanvas` around the card.
class ReportSurface : public QWidget {
    Q_OBJECT

public:
    explicit ReportSurface(QWidget* parent = nullptr);

    /// The column inside the card; 12 points between its items.
    [[nodiscard]] QVBoxLayout* content() const { return content_; }

    /// 0 at rest, 1 while the pointer is over the card, between them on the way.
    [[nodiscard]] double elevation() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void updateShadow();

    QVBoxLayout* content_;
    ValueAnimation* elevation_;
};

} // namespace loadscope
