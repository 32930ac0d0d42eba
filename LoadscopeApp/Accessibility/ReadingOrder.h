// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The order in which assistive technologies read a page and in which Tab walks it. The toolkit takes that in
/// which the widgets were made, which is another one where a part is made anew or before its heading.
namespace loadscope::ReadingOrder {

/// Brings the page around `part` (the outermost area that scrolls, or else `part` itself) in the order of its
/// layouts, which is the order on screen. What lies in no layout is an overlay: it comes last and stays on
/// top.
void follow(QWidget& part);

} // namespace loadscope::ReadingOrder
