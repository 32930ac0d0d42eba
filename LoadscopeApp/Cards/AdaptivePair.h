// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>

namespace loadscope {

/// Lays out two widgets side by side, or one above the other where the width does not suffice.
class AdaptivePair : public QLayout {
    Q_OBJECT

public:
    struct Rule {
        int sideBySideFrom = 0;    ///< width from which on they stand side by side
        int spacing = 0;           ///< between them, side by side
        int stackedSpacing = 0;    ///< between them, one above the other
        double firstShare = 0;     ///< of the width; 0 gives the first the width that it asks for
        bool equalHeights = true;  ///< else the first stands in the middle beside the second
        bool centersFirst = false; ///< when stacked
    };

    AdaptivePair(QWidget* parent, Rule rule);
    ~AdaptivePair() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    void setGeometry(const QRect& area) override;

private:
    [[nodiscard]] bool isSideBySide(int width) const;
    [[nodiscard]] int firstWidth(int width) const;
    [[nodiscard]] static int heightOf(QLayoutItem* item, int width);

    Rule rule_;
    QList<QLayoutItem*> items_;
};

} // namespace loadscope
