// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/FontPreparation.h"

#include "LoadscopeCore/Platform/StopToken.h"

#ifdef LOADSCOPE_HAS_FONTCONFIG
#include <fontconfig/fontconfig.h>

#include <system_error>
#endif

namespace loadscope {

FontPreparation::FontPreparation() {
#ifdef LOADSCOPE_HAS_FONTCONFIG
    try {
        thread_ = JoiningThread([] { FcInit(); });
    } catch (const std::system_error&) {
        // Then the toolkit reads it itself.
    }
#endif
}

} // namespace loadscope
