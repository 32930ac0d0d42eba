// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Controls/Findable.h"

#include <vector>

namespace loadscope {

class RowButton;

/// The rows of a card that are looked for by the names of their subjects. Owns none of them.
class RowButtonList : public Findable {
public:
    explicit RowButtonList(QWidget& card) : card_(card) {}

    void add(RowButton* row) { rows_.push_back(row); }

    QWidget& findWidget() override { return card_; }
    void findRows(const QString& wanted) override;
    [[nodiscard]] std::size_t findableCount() const override { return rows_.size(); }
    [[nodiscard]] std::size_t foundCount() const override;
    [[nodiscard]] QRect firstFound() const override;
    void goToFound() override;

private:
    [[nodiscard]] RowButton* first() const;
    [[nodiscard]] bool isFound(const RowButton& row) const;

    QWidget& card_;
    QString wanted_;
    std::vector<RowButton*> rows_;
};

} // namespace loadscope
