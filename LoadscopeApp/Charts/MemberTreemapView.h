// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Charts/MarkedWidget.h"
#include "LoadscopeCore/Geometry/NestedTreemap.h"
#include "LoadscopeCore/Presentation/MemberTreemap.h"

#include <memory>

namespace loadscope {

class ChartTip;

/// A report's rows as tiles, in them their groups, in those their members. The tile under the pointer, or
/// reached with the arrow keys in the order of the tree, is highlighted and described by a tip. A click on a
/// group, or Return, shows it alone, one level at a time; Backspace goes back to what holds it.
class MemberTreemapView : public MarkedWidget {
    Q_OBJECT

public:
    explicit MemberTreemapView(std::shared_ptr<const ScanReport> report, QWidget* parent = nullptr);

    [[nodiscard]] const NestedTreemap& tiles() const { return layout_; }
    [[nodiscard]] const MemberTreemap& treemap() const { return treemap_; }
    /// The node that is shown alone; nothing for all of them.
    [[nodiscard]] Item zoomed() const { return zoomed_; }
    void zoomTo(Item node);
    /// Goes out by one level; false where there is none.
    bool zoomOut();
    /// Highlights a node that is active elsewhere, without a tip.
    void follow(Item node);

    [[nodiscard]] const ChartTip& tip() const { return *tip_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {60, sizeHint().height()}; }
    [[nodiscard]] int markCount() const override { return static_cast<int>(shown_.size()); }
    [[nodiscard]] Mark mark(std::size_t index) const override;
    [[nodiscard]] Item markOf(std::size_t item) const override { return stopOf(item); }
    [[nodiscard]] Item itemOf(std::size_t mark) const override { return shown_.at(mark); }
    [[nodiscard]] MarkSubject subject(std::size_t item) const override;
    [[nodiscard]] bool canOpenMark(int mark) const override;
    void openMark(int mark) override;

Q_SIGNALS:
    void zoomChanged(Item node);

protected:
    [[nodiscard]] std::size_t stopCount() const override { return shown_.size(); }
    [[nodiscard]] std::size_t itemAtStop(std::size_t stop) const override { return shown_.at(stop); }
    [[nodiscard]] Item stopOf(std::size_t item) const override;
    [[nodiscard]] Item itemAt(QPointF point) const override;
    void activeMoved(Item before, std::optional<QPointF> place) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void layOut();
    /// The group to go into from here on the way to a node.
    [[nodiscard]] Item nextLevel(std::size_t node) const;
    void updateTile(Item item);
    void paintTile(QPainter& painter, std::size_t node) const;
    void paintLabel(QPainter& painter, std::size_t node) const;

    std::shared_ptr<const ScanReport> report_; // what the treemap makes its texts of
    CategoryMembers members_;
    MemberTreemap treemap_;
    NestedTreemap layout_;
    std::vector<std::size_t> shown_; ///< the nodes that have a tile
    Item zoomed_;
    bool isFollowing_ = false;    ///< what becomes active does so elsewhere
    bool hasClickZoomed_ = false; ///< the second click of a double one falls on something else now
    ChartTip* tip_;
};

} // namespace loadscope
