// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class TextLabel;

/// The title of a card and, below it, a sentence about it.
class SectionHeader : public QWidget {
    Q_OBJECT

public:
    explicit SectionHeader(const QString& title, const QString& detail = {}, QWidget* parent = nullptr);

    /// For a header inside of what already carries the title as its name: it is not told twice.
    void silenceTitle();

private:
    TextLabel* title_;
};

} // namespace loadscope
