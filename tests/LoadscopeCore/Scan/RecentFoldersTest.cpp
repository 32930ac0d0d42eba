// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/RecentFolders.h"

#include "tests/Support/HistoryRecords.h"
#include "tests/Support/ManualUIThread.h"
#include "tests/Support/Testing.h"

#include <condition_variable>
#include <mutex>

namespace {

std::string names(const RecentFolders& recent) {
    std::string text;
    for (const auto& folder : recent.folders())
        text += (text.empty() ? "" : " ") + folder.selection.displayName + (folder.isMissing ? "!" : "");
    return text;
}

TEST(RecentFolders, PutWhatWasChosenBeforeWhatWasRecorded) {
    ManualUIThread thread;
    RecentFolders recent(thread);
    std::vector<RecordedScan> history;
    for (int i = 1; i <= 12; ++i)
        history.push_back(record(i, "r" + std::to_string(i), day(i), 1'000));
    history.push_back(record(13, "r3", day(20), 1'000));
    recent.setHistory(history);
    EXPECT_EQ(names(recent), "r3 r12 r11 r10 r9 r8 r7 r6 r5 r4");
    recent.add(RepoSelection("/elsewhere/new"));
    recent.add(recent.folders()[3].selection);
    EXPECT_EQ(names(recent), "r11 new r3 r12 r10 r9 r8 r7 r6 r5");
    recent.setHistory({});
    EXPECT_EQ(names(recent), "r11 new");
}

TEST(RecentFolders, TellWhichAreGoneAndWaitForNone) {
    TemporaryFolder folder;
    ManualUIThread thread;
    struct Share { // outlives the test with the thread that asks it
        std::mutex mutex;
        std::condition_variable changed;
        bool answers = false;
    };
    const auto share = std::make_shared<Share>();
    const auto isThere = [share](const std::string& path) {
        std::unique_lock lock(share->mutex);
        if (path.ends_with("dead")) share->changed.wait(lock, [&] { return share->answers; });
        return FolderAccess::checkPresence(path);
    };
    {
        RecentFolders recent(thread, isThere);
        for (const char* name : {"dead", "there", "gone"})
            recent.add(RepoSelection(folder.path(name)));
        makeFolder(folder.path("there"));
        int told = 0;
        const auto subscription = recent.observe([&] { ++told; });
        recent.check();
        EXPECT_TRUE(thread.runUntil([&] { return names(recent) == "gone! there dead"; }));
        EXPECT_EQ(told, 1) << "an answer that changes nothing is not told";
        EXPECT_EQ(RecentFolderTexts::line(recent.folders()[0]), "gone — no longer there");
        EXPECT_EQ(RecentFolderTexts::line(recent.folders()[1]), "there — " + folder.path("there"));
        makeFolder(folder.path("gone"));
        recent.check();
        EXPECT_TRUE(thread.runUntil([&] { return names(recent) == "gone there dead"; }));
    } // would wait for ever for the dead one
    const std::lock_guard lock(share->mutex);
    share->answers = true;
    share->changed.notify_all();
}

} // namespace
