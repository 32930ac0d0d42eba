// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexInstructions.h"

#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace loadscope {
namespace {

/// A repository with the folders "a" and "a/b".
class CodexInstructionFiles : public testing::Test {
protected:
    CodexInstructionFiles() {
        makeFolder(repository + "/.git");
        makeFolder(repository + "/a/b");
    }

    void write(const std::string& name, const std::string& bytes) const {
        writeFile(repository + "/" + name, bytes);
    }

    /// "a/AGENTS.md 5/9" for each file: what is read of how much.
    [[nodiscard]] std::string chain(const std::string& folder = "a/b") const {
        const auto found = CodexInstructions::find(repository + "/" + folder, configuration);
        std::string text;
        for (const auto& file : found.files)
            text += (text.empty() ? "" : ", ") + file.path.substr(repository.size() + 1) + " " +
                    std::to_string(file.readBytes) + "/" + std::to_string(file.byteCount);
        if (found.unreadablePath)
            text += " stopped by " + found.unreadablePath->substr(repository.size() + 1);
        return text;
    }

    const TemporaryFolder outside;
    const std::string repository = outside.path("repository");
    CodexConfiguration configuration;
};

TEST_F(CodexInstructionFiles, AreReadFromTheRootDownToTheLimit) {
    write("AGENTS.md", std::string(20'000, 'x'));
    write("a/AGENTS.md", std::string(9'000, 'x'));
    write("a/b/AGENTS.md", std::string(7'000, 'x'));
    struct Case {
        std::optional<std::int64_t> limit;
        const char* expected;
    };
    for (const Case& c :
         std::vector<Case>{{{}, "AGENTS.md 20000/20000, a/AGENTS.md 9000/9000, a/b/AGENTS.md 3768/7000"},
                           {36'000, "AGENTS.md 20000/20000, a/AGENTS.md 9000/9000, a/b/AGENTS.md 7000/7000"},
                           {29'000, "AGENTS.md 20000/20000, a/AGENTS.md 9000/9000, a/b/AGENTS.md 0/7000"},
                           {10'000, "AGENTS.md 10000/20000, a/AGENTS.md 0/9000, a/b/AGENTS.md 0/7000"},
                           {0, "AGENTS.md 0/20000, a/AGENTS.md 0/9000, a/b/AGENTS.md 0/7000"}}) {
        configuration.projectDocMaxBytes = c.limit;
        EXPECT_EQ(chain(), c.expected);
    }
    configuration.projectDocMaxBytes.reset();
    const auto found = CodexInstructions::find(repository + "/a/b", configuration);
    EXPECT_EQ(found.totalBytes(), 36'000);
    EXPECT_EQ(found.readBytes(), 32'768);
    ASSERT_EQ(found.cut().size(), 1U);
    EXPECT_EQ(found.cut().front().cutBytes(), 3'232);
    EXPECT_EQ(chain("."), "AGENTS.md 20000/20000");
}

TEST_F(CodexInstructionFiles, AreOneOfEachFolderByName) {
    configuration.projectDocFallbackFilenames = {"../AGENTS.md", " ALT.md ", "OTHER.md", ""};
    write("OTHER.md", "12345");
    write("ALT.md", "1234");
    write("a/AGENTS.md", "123");
    write("a/ALT.md", "1");
    write("a/b/AGENTS.md", "1");
    write("a/b/AGENTS.override.md", "12");
    EXPECT_EQ(chain(), "ALT.md 4/4, a/AGENTS.md 3/3, a/b/AGENTS.override.md 2/2");
    configuration.projectDocFallbackFilenames.clear();
    EXPECT_EQ(chain(), "a/AGENTS.md 3/3, a/b/AGENTS.override.md 2/2");
}

TEST_F(CodexInstructionFiles, BeginAtTheMarkOfARoot) {
    write("AGENTS.md", "1");
    write("a/AGENTS.md", "1");
    write("a/b/AGENTS.md", "1");
    const std::string last = "a/b/AGENTS.md 1/1";
    write("a/.git", "gitdir: elsewhere");
    EXPECT_EQ(chain(), "a/AGENTS.md 1/1, " + last) << "a work tree's .git is a file";
    std::filesystem::remove(repository + "/a/.git");
    std::filesystem::create_symlink("nowhere", repository + "/a/.git");
    EXPECT_EQ(chain(), "AGENTS.md 1/1, a/AGENTS.md 1/1, " + last);
    configuration.projectRootMarkers = {"MARK", "b"};
    EXPECT_EQ(chain(), "a/AGENTS.md 1/1, " + last);
    for (const auto& marks : {std::vector<std::string>{}, std::vector<std::string>{"MARK"}}) {
        configuration.projectRootMarkers = marks;
        EXPECT_EQ(chain(), last) << "only its own without a root";
    }
    configuration.projectRootMarkers.reset();
    std::filesystem::create_directory_symlink(repository + "/a/b", outside.path("link"));
    EXPECT_EQ(CodexInstructions::find(outside.path("link"), configuration).files.size(), 3U)
        << "the folder itself, not where its link lies";
}

TEST_F(CodexInstructionFiles, CountForNothingWhenTheyAreBlank) {
    configuration.projectDocMaxBytes = 10;
    write("AGENTS.override.md", "");
    write("AGENTS.md", "hidden");
    write("a/AGENTS.md", " \n\t\u3000\n");
    write("a/b/AGENTS.md", "0123456789ab");
    EXPECT_EQ(chain(), "a/b/AGENTS.md 10/12");
    write("a/AGENTS.md", std::string(12, ' ') + "text");
    EXPECT_EQ(chain(), "a/AGENTS.md 0/16, a/b/AGENTS.md 10/12") << "dropped and cut";
    write("AGENTS.override.md", "0123456789");
    write("a/AGENTS.md", "  ");
    EXPECT_EQ(chain(), "AGENTS.override.md 10/10, a/b/AGENTS.md 0/12");
}

TEST_F(CodexInstructionFiles, AreRegularFilesOnly) {
    write("AGENTS.md", "1");
    const std::string path = repository + "/AGENTS.override.md";
    makeFolder(path);
    EXPECT_EQ(chain("."), "AGENTS.md 1/1");
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(chain("."), "AGENTS.md 1/1");
    std::filesystem::rename(path, outside.path("fifo"));
    for (const char* const target : {"nowhere", "../fifo", "a"}) {
        std::filesystem::create_symlink(target, path);
        EXPECT_EQ(chain("."), "AGENTS.md 1/1") << target;
        std::filesystem::remove(path);
    }
    writeFile(outside.path("far.md"), "123");
    std::filesystem::create_symlink("../far.md", path);
    EXPECT_EQ(chain("."), "AGENTS.override.md 3/3");
}

TEST_F(CodexInstructionFiles, AreAllUnreadWhenOneCannotBeRead) {
    write("AGENTS.md", "123");
    write("a/b/AGENTS.md", "1");
    const std::string path = repository + "/a/AGENTS.md";
    std::filesystem::create_symlink("AGENTS.md", path); // a loop
    EXPECT_EQ(chain(), "AGENTS.md 0/3 stopped by a/AGENTS.md");
    std::filesystem::remove(path);
    write("a/AGENTS.md", "12");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_TRUE(holdsForOrdinaryUser([&] { return chain() == "AGENTS.md 0/3 stopped by a/AGENTS.md"; }));
    configuration.projectDocMaxBytes = 3;
    EXPECT_TRUE(
        holdsForOrdinaryUser([&] { return chain() == "AGENTS.md 3/3, a/AGENTS.md 0/2, a/b/AGENTS.md 0/1"; }));
}

TEST_F(CodexInstructionFiles, HaveAPersonalOneThatIsNotCounted) {
    const std::string folder = makeFolder(outside.path("codex"));
    EXPECT_EQ(CodexInstructions::personal(folder), std::nullopt);
    writeFile(folder + "/AGENTS.md", "1234");
    writeFile(folder + "/AGENTS.override.md", " \n");
    EXPECT_EQ(CodexInstructions::personal(folder)->path, folder + "/AGENTS.md");
    writeFile(folder + "/AGENTS.override.md", "12");
    EXPECT_EQ(CodexInstructions::personal(folder),
              (CodexInstructions::File{folder + "/AGENTS.override.md", 2, 2}));
}

} // namespace
} // namespace loadscope
