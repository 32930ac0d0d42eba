// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/FolderAccess.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include "LoadscopeCore/Process/CancellationError.h"
#include "LoadscopeCore/Report/RepoSelection.h"
#include "tests/Support/Testing.h"

namespace {

bool isUnreadable(const std::string& path) {
    return FolderAccess::check(path) == ProbeError(ProbeError::RepositoryUnreadable{path});
}

TEST(FolderAccess, AcceptsOnlyFoldersThatCanBeListed) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FolderAccess::check(makeFolder(folder.path("empty"))));
    std::filesystem::create_directory_symlink("empty", folder.path("link"));
    EXPECT_FALSE(FolderAccess::check(folder.path("link")));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    EXPECT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {writeFile(folder.path("file"), ""), folder.path("gone"), folder.path("loop"), folder.path("pipe"),
          std::string(), std::string(5000, 'x')}) {
        EXPECT_TRUE(isUnreadable(path)) << path;
    }
    const std::string closed = makeFolder(folder.path("closed"));
    ASSERT_EQ(chmod(closed.c_str(), 0111), 0);
    EXPECT_TRUE(holdsForOrdinaryUser([&] { return isUnreadable(closed); }));
}

TEST(FolderAccess, LeavesAFolderThatNeverAnswersToItself) {
    const auto answer = std::make_shared<std::promise<void>>();
    const auto released = answer->get_future().share();
    const auto hang = [released](const std::string& path) -> std::optional<ProbeError> {
        released.wait();
        return ProbeError(ProbeError::RepositoryUnreadable{path});
    };
    StopSource stop;
    auto outcome =
        std::async(std::launch::async, [&] { return FolderAccess::checkDetached("/a", stop.token(), hang); });
    stop.requestStop();
    EXPECT_THROW((void)outcome.get(), CancellationError);
    answer->set_value();
    EXPECT_EQ(FolderAccess::checkDetached("/b", {}, hang),
              ProbeError(ProbeError::RepositoryUnreadable{"/b"}));
}

TEST(RepoSelection, IsNamedAfterItsFolderUnlessNamed) {
    EXPECT_EQ(RepoSelection("/Users/me/src/app").displayName, "app");
    EXPECT_EQ(RepoSelection("/Users/me/src/app").id(), "/Users/me/src/app");
    EXPECT_EQ(RepoSelection("/Users/me/src/app//"), RepoSelection("/Users/me/src/app")) << "one folder";
    EXPECT_EQ(RepoSelection("/").path, "/");
    EXPECT_EQ(RepoSelection("/Users/me/src/app", "Mine").displayName, "Mine");
    EXPECT_NE(RepoSelection("/a/app"), RepoSelection("/b/app"));
}

} // namespace
