// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Cards/ReportSurface.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

class QMenu;

namespace loadscope {

class CategoryTable;

/// The latest Claude Code scan of one repository: its total, its band and its categories. Its texts can be
/// selected; with the keyboard on the card itself, the key for Copy takes all of them.
class ColumnCard : public ReportSurface {
    Q_OBJECT

public:
    static constexpr int narrowest = 200; ///< side by side with others

    /// `longestPill` is the longest pill of all columns: their charts begin at the same height.
    ColumnCard(const ComparePresentation& presentation, const ComparePresentation::Column& column,
               const QString& longestPill);

    /// All that the card says, as text.
    [[nodiscard]] QString copyableText() const;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void copy() const;
    void addCopy(QMenu& menu);

    QString summary_;
    CategoryTable* categories_;
};

} // namespace loadscope
