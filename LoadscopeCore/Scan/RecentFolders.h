// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/RecordedScan.h"
#include "LoadscopeCore/Platform/Observers.h"
#include "LoadscopeCore/Platform/UIThread.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "LoadscopeCore/Scan/FolderAccess.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace loadscope {

/// The folders to go back to: those that were chosen in this run, then those that the history knows, the last
/// one first. Whether they are still there is asked for only when somebody looks, each on a thread of its
/// own: one on a share that has gone away may never answer, and counts as there until it does. Confined to
/// the UI thread; observers are told after each change.
class RecentFolders {
public:
    static constexpr std::size_t maximumFolders = 10;

    struct Folder {
        RepoSelection selection;
        bool isMissing = false; ///< by the last answer

        bool operator==(const Folder&) const = default;
    };

    /// `uiThread` must outlive it; `isThere` is asked on other threads.
    explicit RecentFolders(UIThread& uiThread, FolderAccess::Check isThere = FolderAccess::checkPresence);
    ~RecentFolders();
    RecentFolders(const RecentFolders&) = delete;
    RecentFolders& operator=(const RecentFolders&) = delete;

    [[nodiscard]] const std::vector<Folder>& folders() const;

    void setHistory(const std::vector<RecordedScan>& history);
    /// A folder that was chosen comes first from now on.
    void add(const RepoSelection& chosen);

    /// Asks the disk again; returns at once.
    void check();

    [[nodiscard]] Subscription observe(std::function<void()> observer);

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

/// What is told of one of them.
namespace RecentFolderTexts {

/// "app — /home/ana/src/app", or "app — no longer there".
[[nodiscard]] std::string line(const RecentFolders::Folder& folder);

/// The second line below its name: its path, or that nothing is there any more.
[[nodiscard]] std::string detail(const RecentFolders::Folder& folder);

/// Both in one line, for who cannot see them.
[[nodiscard]] std::string spoken(const RecentFolders::Folder& folder);

} // namespace RecentFolderTexts
} // namespace loadscope
