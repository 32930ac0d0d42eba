// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace loadscope {

/// Lays its items out side by side in equal widths where each can have its least width, otherwise one below
/// the other.
class AdaptiveRow : public QLayout {
    Q_OBJECT

public:
    /// `narrowest` is the least width of an item side by side, at the usual text size; items that cannot be
    /// that narrow want more. With 0, items want the width of their hints.
    explicit AdaptiveRow(int narrowest, int spacing);
    ~AdaptiveRow() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    [[nodiscard]] bool isStacked(int width) const;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& area) override;
    void invalidate() override;

private:
    [[nodiscard]] int itemWidth(int width) const;
    [[nodiscard]] int measuredHeight(int width) const;
    [[nodiscard]] int widestHint() const;
    [[nodiscard]] static int itemHeight(const QLayoutItem& item, int width);
    [[nodiscard]] int tallest(int width) const;

    int narrowest_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
    // Layouts ask again and again for what only an invalidation changes.
    mutable std::optional<QSize> minimum_;
    mutable std::map<int, int> heights_;
};

} // namespace loadscope
