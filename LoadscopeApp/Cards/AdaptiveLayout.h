// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QRect>

#include <memory>
#include <optional>
#include <vector>

namespace loadscope {

/// Lays its items out side by side, or one below the other where the width does not suffice. All places
/// follow from the width; those of the last few widths are remembered, because layouts ask for several again
/// and again before they settle.
class AdaptiveLayout : public QLayout {
    Q_OBJECT

public:
    /// The widths of the items side by side: the others share what the first leaves.
    enum class Widths { equal, firstAsItAsks, firstByShare };

    struct Rule {
        Widths widths = Widths::equal;
        int spacing = 0;           ///< between items side by side
        int stackedSpacing = 0;    ///< between items one below the other
        int sideBySideFrom = 0;    ///< width from which on they stand side by side, at the usual text size
        int narrowest = 0;         ///< without that width: the least width of an item side by side
        double firstShare = 0;     ///< of the width, for `firstByShare`
        bool equalHeights = true;  ///< else the first stands in the middle beside the others
        bool centersFirst = false; ///< one below the other
        bool wraps = false;        ///< four and more come in rows of three or two where so many have room
    };

    /// Items stand side by side where each is at least so wide, and as wide as it must be. With 0, items want
    /// the width of their hints.
    [[nodiscard]] static constexpr Rule equal(int narrowest, int spacing) {
        return {Widths::equal, spacing, spacing, 0, narrowest, 0, true, false};
    }

    /// The same, but four and more items that have no room in one row come in rows of three or two.
    [[nodiscard]] static constexpr Rule rows(int narrowest, int spacing) {
        return {Widths::equal, spacing, spacing, 0, narrowest, 0, true, false, true};
    }

    explicit AdaptiveLayout(const Rule& rule, QWidget* parent = nullptr);
    ~AdaptiveLayout() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return placesFor(width).height; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& area) override;
    void invalidate() override;

private:
    /// Where everything is in its natural height, from left to right.
    struct Places {
        int width = 0;
        int height = 0;
        bool areSideBySide = false;
        bool areInRows = false; ///< each already as high as its row
        std::vector<QRect> items;
    };

    [[nodiscard]] const Places& placesFor(int width) const;
    [[nodiscard]] Places place(int width) const;
    [[nodiscard]] Places placeInRows(int width, int columns) const;
    [[nodiscard]] bool isSideBySide(int width) const;
    /// How many stand in a row where not all of them have room; 1 unless they wrap.
    [[nodiscard]] int columns(int width) const;
    [[nodiscard]] int equalWidth(int width, int columns) const;
    [[nodiscard]] int firstWidth(int width) const;
    [[nodiscard]] int widestHint() const;
    [[nodiscard]] QRect stretched(const Places& places, std::size_t item, int height) const;

    Rule rule_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
    // Layouts ask again and again for what only an invalidation changes.
    mutable std::optional<int> narrowest_;
    mutable std::vector<Places> remembered_; ///< the latest last
};

} // namespace loadscope
