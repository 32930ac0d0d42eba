// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QHBoxLayout;
class QVBoxLayout;
class QWidget;

/// Pieces that cards with lists and charts share.
namespace loadscope::CardPieces {

/// A section header with a control at the trailing edge of its title; the sentence below has the whole width.
[[nodiscard]] QVBoxLayout* header(const QString& title, const QString& detail, QWidget* control);

/// `content` at the card's usual distance from its sides, for cards whose rows reach from edge to edge.
[[nodiscard]] QHBoxLayout* inset(QWidget* content);

/// A thin line across the card.
[[nodiscard]] QWidget* divider();

} // namespace loadscope::CardPieces
