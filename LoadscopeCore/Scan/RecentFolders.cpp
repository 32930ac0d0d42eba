// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/RecentFolders.h"

#include "LoadscopeCore/History/ScanHistory.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Process/CancellationError.h"

#include <algorithm>
#include <set>
#include <system_error>
#include <utility>

namespace loadscope {

/// Held weakly by what the threads post: those of a list that is gone touch nothing.
struct RecentFolders::Implementation : std::enable_shared_from_this<Implementation> {
    Implementation(UIThread& thread, FolderAccess::Check given)
        : uiThread(thread), isThere(std::move(given)) {}

    UIThread& uiThread;
    const FolderAccess::Check isThere;
    Observers observers;
    std::vector<RepoSelection> chosen; ///< in this run, the last one first
    std::vector<RepoSelection> recorded;
    std::set<std::string> missing;
    std::vector<Folder> folders;
    std::vector<JoiningThread> questions; ///< of the last time that somebody looked

    void rebuild();
    void ask(const std::string& path);
};

void RecentFolders::Implementation::rebuild() {
    std::vector<Folder> all;
    for (const auto* list : {&chosen, &recorded})
        for (const RepoSelection& selection : *list) {
            const auto isIt = [&](const Folder& folder) { return folder.selection.id() == selection.id(); };
            if (all.size() < maximumFolders && std::none_of(all.begin(), all.end(), isIt))
                all.push_back({selection, missing.contains(selection.path)});
        }
    if (all == folders) return;
    folders = std::move(all);
    observers.notify();
}

void RecentFolders::Implementation::ask(const std::string& path) {
    const auto question = [path, check = isThere, &thread = uiThread,
                           weak = weak_from_this()](const StopToken& stop) {
        try {
            const bool isMissing = FolderAccess::checkDetached(path, stop, check).has_value();
            thread.post([path, isMissing, weak] {
                const auto self = weak.lock();
                if (!self) return;
                if (isMissing)
                    self->missing.insert(path);
                else
                    self->missing.erase(path);
                self->rebuild();
            });
        } catch (const CancellationError&) { // nobody wants to know any more
        }
    };
    try {
        questions.emplace_back(question);
    } catch (const std::system_error&) { // no thread is to be had: it stays as it was
    }
}

RecentFolders::RecentFolders(UIThread& uiThread, FolderAccess::Check isThere)
    : implementation_(std::make_shared<Implementation>(uiThread, std::move(isThere))) {}

RecentFolders::~RecentFolders() { implementation_->questions.clear(); }

const std::vector<RecentFolders::Folder>& RecentFolders::folders() const { return implementation_->folders; }

void RecentFolders::setHistory(const std::vector<RecordedScan>& history) {
    implementation_->recorded = ScanHistory::recentFolders(history, maximumFolders);
    implementation_->rebuild();
}

void RecentFolders::add(const RepoSelection& chosen) {
    auto& all = implementation_->chosen;
    std::erase_if(all, [&](const RepoSelection& other) { return other.id() == chosen.id(); });
    all.insert(all.begin(), chosen);
    if (all.size() > maximumFolders) all.pop_back();
    implementation_->rebuild();
}

void RecentFolders::check() {
    implementation_->questions.clear(); // stops those that have no answer yet
    for (const Folder& folder : implementation_->folders)
        implementation_->ask(folder.selection.path);
}

Subscription RecentFolders::observe(std::function<void()> observer) {
    return implementation_->observers.add(std::move(observer));
}

std::string RecentFolderTexts::line(const RecentFolders::Folder& folder) {
    return folder.selection.displayName + " — " +
           (folder.isMissing ? std::string("no longer there") : folder.selection.path);
}

std::string RecentFolderTexts::detail(const RecentFolders::Folder& folder) {
    return (folder.isMissing ? "No longer there: " : "") + folder.selection.path;
}

std::string RecentFolderTexts::spoken(const RecentFolders::Folder& folder) {
    return folder.selection.displayName + ", " + detail(folder);
}

} // namespace loadscope
