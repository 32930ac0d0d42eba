// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <cstddef>

namespace loadscope {

class ComparePresentation;
class PushButton;
class TextLabel;

/// Leads from one page of cards to the next. Hidden while there is one page.
class CardPager : public QWidget {
    Q_OBJECT

public:
    explicit CardPager(QWidget* parent = nullptr);

    void refresh(const ComparePresentation& shown);

Q_SIGNALS:
    void pageRequested(std::size_t page);

private:
    std::size_t page_ = 0;
    PushButton* previous_;
    PushButton* next_;
    TextLabel* place_;
};

} // namespace loadscope
