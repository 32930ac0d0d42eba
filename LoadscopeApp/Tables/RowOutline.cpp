// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Tables/RowOutline.h"

namespace loadscope {

RowOutline::RowOutline(const std::vector<TableRow>& rows)
    : ends_(rows.size()), parents_(rows.size()), open_(rows.size(), false) {
    std::vector<std::size_t> above;
    const auto closeDownTo = [&](int level, std::size_t end) {
        while (!above.empty() && rows[above.back()].level >= level) {
            ends_[above.back()] = end;
            above.pop_back();
        }
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        closeDownTo(rows[row].level, row);
        if (!above.empty()) {
            parents_[row] = above.back();
            isFlat_ = false;
        }
        above.push_back(row);
    }
    for (const std::size_t row : above)
        ends_[row] = rows.size();
}

} // namespace loadscope
