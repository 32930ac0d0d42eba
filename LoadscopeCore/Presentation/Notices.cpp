// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/Notices.h"

namespace loadscope {

Notice Notice::scanIsRunning() {
    return {"A scan is running",
            "Another repository can be opened when the scan has ended. The Overview page can cancel it."};
}

Notice Notice::historyNotDeleted() {
    return {"The recorded scans could not be deleted",
            "The folder with the recorded data cannot be written to. Nothing was changed on this page."};
}

Notice Notice::fileNotSaved(std::string_view path) {
    return {"The file could not be saved", "Nothing was written to " + std::string(path) +
                                               ". Check that the file and its folder can be written to and "
                                               "that there is space left, then try again."};
}

std::string Notice::exported(std::string_view fileName) { return "Saved “" + std::string(fileName) + "”."; }

std::string Notice::notExported(std::string_view fileName) {
    return "“" + std::string(fileName) +
           "” could not be saved. Check that the folder can be written to and that there is space left.";
}

} // namespace loadscope
