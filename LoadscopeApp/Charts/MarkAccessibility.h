// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

/// Presents the marks of a `MarkedWidget` to assistive technologies.
namespace loadscope::MarkAccessibility {

/// Makes them known to the toolkit. Harmless when repeated.
void install();

} // namespace loadscope::MarkAccessibility
