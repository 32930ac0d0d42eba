// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/TreemapTiles.h"

#include <vector>

namespace loadscope {

class ChartTip;

/// Files as tiles of areas proportional to their weights. The tile under the pointer, or reached with the
/// arrow keys from large to small, is highlighted and described by a tip.
class TreemapView : public MarkedWidget {
    Q_OBJECT

public:
    struct Tile {
        QString path;
        QString label;
        QString detail; ///< the second line of the tip
        QString number; ///< what its menu copies with its path
        double weight = 0;
    };

    explicit TreemapView(std::vector<Tile> tiles, QWidget* parent = nullptr);

    [[nodiscard]] const TreemapTiles& tiles() const { return layout_; }
    [[nodiscard]] const ChartTip& tip() const { return *tip_; }
    /// Highlights a tile that is active elsewhere, without a tip.
    void follow(Item item);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {60, sizeHint().height()}; }
    [[nodiscard]] int markCount() const override { return static_cast<int>(tiles_.size()); }
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] MarkSubject subject(std::size_t item) const override {
        return {tiles_.at(item).path, tiles_[item].number};
    }

protected:
    [[nodiscard]] std::size_t stopCount() const override { return layout_.keyboardOrder().size(); }
    [[nodiscard]] std::size_t itemAtStop(std::size_t stop) const override {
        return layout_.keyboardOrder().at(stop);
    }
    [[nodiscard]] Item stopOf(std::size_t item) const override;
    [[nodiscard]] Item itemAt(QPointF point) const override;
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void updateTile(Item item);
    void paintTile(QPainter& painter, std::size_t index) const;
    void paintLabel(QPainter& painter, std::size_t index) const;

    std::vector<Tile> tiles_;
    TreemapTiles layout_;
    bool isFollowing_ = false; ///< what becomes active does so elsewhere
    ChartTip* tip_;
};

} // namespace loadscope
