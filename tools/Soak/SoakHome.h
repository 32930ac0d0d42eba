// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/Soak/Dice.h"

#include <string>
#include <vector>

namespace loadscope::soak {

/// A temporary home folder with repositories of every kind and the stand-ins of `demo/`, whose behaviour is
/// drawn anew again and again. The environment of this process points there from the constructor on, so that
/// nothing of the user's is read or changed; no thread may run yet.
class SoakHome {
public:
    explicit SoakHome(Dice& dice);
    ~SoakHome();
    SoakHome(const SoakHome&) = delete;
    SoakHome& operator=(const SoakHome&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string historyFile() const;
    /// A folder for files that are exported.
    [[nodiscard]] std::string exports() const { return path_ + "/exports"; }

    /// A folder that can be scanned, or at times one that cannot: missing, a file, without access.
    [[nodiscard]] std::string anyFolder(Dice& dice) const;
    [[nodiscard]] std::string goodFolder(Dice& dice) const;

    /// Has the stand-ins behave in other ways from now on; returns these.
    std::string drawBehaviour(Dice& dice) const;
    /// Removes a tool or puts something unusable in its place; returns what.
    std::string breakTool(Dice& dice) const;
    void repairTools() const;

private:
    void setEnvironment() const;
    void makeRepositories(Dice& dice);
    [[nodiscard]] std::string toolPath(const std::string& tool) const;
    void installTool(const std::string& tool) const;

    std::string path_;
    std::vector<std::string> good_;
    std::vector<std::string> bad_;
};

} // namespace loadscope::soak
