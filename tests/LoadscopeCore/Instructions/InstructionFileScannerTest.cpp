// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionFileScanner.h"

#include "LoadscopeCore/Instructions/InstructionFileReader.h"
#include "LoadscopeCore/Instructions/InstructionImports.h"
#include "tests/Support/Testing.h"

#include <fstream>
#include <map>

namespace {

namespace fs = std::filesystem;

/// A home folder "ana" with a repository "ana/app" in it.
class InstructionFileScannerTest : public testing::Test {
protected:
    void write(const std::string& name, std::string_view text) const { writeFile(folder.path(name), text); }
    void link(const std::string& name, const std::string& target) const {
        fs::create_symlink(target, folder.path(name));
    }

    [[nodiscard]] InstructionFileSet scan(const std::string& repository = "ana/app",
                                          const std::string& home = "ana",
                                          const std::string& config = "ana/.claude") const {
        return InstructionFileScanner(folder.path(home), folder.path(config)).scan(folder.path(repository));
    }

    /// "r", "i" or "p" and the path for each listed file, "!" and the path for each unreadable one.
    [[nodiscard]] std::string described(const InstructionFileSet& set) const {
        std::string text;
        const auto add = [&](const std::string& mark, const std::string& path) {
            text += (text.empty() ? "" : " ") + mark + path.substr(folder.path().size());
        };
        for (const InstructionFileTier tier : allInstructionFileTiers) {
            for (const auto& file : set.files(tier))
                add(rawValue(tier).substr(0, 1), file.path);
        }
        for (const std::string& path : set.unreadablePaths)
            add("!", path);
        return text;
    }
    [[nodiscard]] std::string scanned() const { return described(scan()); }

    const TemporaryFolder folder;
};

TEST_F(InstructionFileScannerTest, SortsFilesIntoTiers) {
    const auto padded = [](std::string text, std::size_t size) {
        text.resize(size, '\n');
        return text;
    };
    write("ana/.claude/CLAUDE.md", padded("Style: @~/.claude/rules/style.md", 1000));
    write("ana/.claude/rules/style.md", padded("@/etc/motd", 403));
    write("ana/work/app/CLAUDE.md", padded("See @docs/setup.md.\n```\n@notes.md\n```", 2050));
    write("ana/work/app/docs/setup.md", "@../CLAUDE");
    write("ana/work/app/notes.md", "");
    write("ana/work/AGENTS.md", "not looked for here");
    write("ana/work/CLAUDE.md", "1");
    write("ana/CLAUDE.local.md", "");
    write("CLAUDE.md", "above the home folder");
    const InstructionFileSet set = scan("ana/work/app/");
    EXPECT_EQ(described(set), "r/ana/work/app/CLAUDE.md r/ana/work/app/docs/setup.md i/ana/work/CLAUDE.md "
                              "i/ana/CLAUDE.local.md p/ana/.claude/CLAUDE.md p/ana/.claude/rules/style.md");
    std::string tokens;
    for (const auto& category : set.localCategories())
        tokens += category.name + std::to_string(category.tokens) + ";";
    EXPECT_EQ(tokens, "Repository instructions516;Inherited project instructions1;Personal instructions351;");
    EXPECT_EQ(described(scan("ana/work/app", "elsewhere", "elsewhere/.claude")),
              "r/ana/work/app/CLAUDE.md r/ana/work/app/docs/setup.md")
        << "outside the home folder";
    write("ana/CLAUDE.md", "");
    EXPECT_EQ(described(scan("ana")), "r/ana/.claude/CLAUDE.md r/ana/.claude/rules/style.md r/ana/CLAUDE.md "
                                      "r/ana/CLAUDE.local.md")
        << "the home folder itself";
}

TEST_F(InstructionFileScannerTest, TakesThePersonalFileFromTheConfiguration) {
    write("ana/.claude/CLAUDE.md", "");
    write("ana/.claude/old.md", "");
    write("ana/moved/CLAUDE.md", "@rules/style.md @~/.claude/old.md @../moved2/x.md");
    write("ana/moved/rules/style.md", "");
    write("ana/moved2/x.md", "");
    write("ana/app/CLAUDE.md", "@~/.claude/old.md @~/moved/more.md");
    write("ana/moved/more.md", "");
    link("ana/alias", "moved");
    const std::string moved = "r/ana/app/CLAUDE.md i/ana/moved/more.md p/ana/moved/CLAUDE.md "
                              "p/ana/moved/rules/style.md";
    const std::pair<const char*, std::string> cases[] = {
        {"ana/.claude", "r/ana/app/CLAUDE.md i/ana/.claude/old.md p/ana/.claude/CLAUDE.md"},
        {"ana/moved", moved},
        {"ana/.claude/../moved/", moved},
        {"ana/alias", moved},
        {"ana/nowhere", "r/ana/app/CLAUDE.md"},
        {"ana/app", "r/ana/app/CLAUDE.md"}, // the repository's own file stays one
    };
    for (const auto& [config, files] : cases)
        EXPECT_EQ(described(scan("ana/app", "ana", config)), files) << config;
}

TEST_F(InstructionFileScannerTest, FollowsLinksToWhereTheyLead) {
    write("data/app/AGENTS.md", "@in.md @out.md @loop.md @round/in.md");
    write("data/app/in.md", "");
    write("data/other.md", "");
    makeFolder(folder.path("ana"));
    link("data/app/out.md", "../other.md");
    link("data/app/loop.md", "loop.md");
    link("data/app/round", ".");
    link("data/app/CLAUDE.md", "../other.md");
    link("ana/app", "../data/app");
    write("ana/CLAUDE.md", "@app/in.md @../data/alias.md @../data/app/new.md");
    link("data/alias.md", "app/late.md");
    write("data/app/late.md", "");
    EXPECT_EQ(scanned(),
              "r/data/app/AGENTS.md r/data/app/in.md r/data/app/late.md i/data/other.md i/ana/CLAUDE.md");
}

TEST_F(InstructionFileScannerTest, SurvivesWhatIsNoInstructionFile) {
    const std::string path = folder.path("ana/app/CLAUDE.md");
    write("ana/app/in.md", "");
    const auto replaced = [&](const std::function<void()>& make) {
        fs::remove_all(path);
        make();
        return scanned();
    };
    EXPECT_EQ(replaced([&] { mkfifo(path.c_str(), 0666); }), "");
    EXPECT_EQ(replaced([&] { makeFolder(path); }), "");
    for (const char* target : {"/dev/zero", "gone", "CLAUDE.md"})
        EXPECT_EQ(replaced([&] { fs::create_symlink(target, path); }), "") << target;
    std::string deep = "@";
    while (deep.size() < 2'000'000)
        deep += "a/";
    const std::string start = "@in.md\n";
    const std::pair<std::string, bool> texts[] = {
        {start + std::string(4'000'000 - start.size(), '\n'), true},
        {start + std::string(4'000'001 - start.size(), '\n'), false},
        {start + "\xE9", false},
        {std::string("@in.md\0", 7), false},
        {"@" + std::string(3'000'000, '/') + "a\n@in.md", true},
        {deep + "\n@in.md", true},
    };
    for (const auto& [text, isFollowed] : texts) {
        EXPECT_EQ(replaced([&, &bytes = text] { writeFile(path, bytes); }),
                  std::string("r/ana/app/CLAUDE.md") + (isFollowed ? " r/ana/app/in.md" : ""))
            << text.substr(0, 20);
    }
    // Swapped between looking and opening.
    for (const std::function<void()>& swap :
         {std::function([&] { fs::remove(path); }), std::function([&] { mkfifo(path.c_str(), 0666); }),
          std::function([&] { fs::create_symlink("in.md", path); }),
          std::function([&] { fs::remove_all(fs::path(path).parent_path()), write("ana/app", ""); })}) {
        replaced([&] { writeFile(path, "x"); });
        PathLookup lookup;
        PathLookup::Location location = lookup.find(path);
        replaced(swap);
        EXPECT_EQ(InstructionFileReader().read(lookup, std::move(location), 10).status,
                  InstructionFileReader::Status::missing);
    }
}

TEST_F(InstructionFileScannerTest, NamesWhatMayNotBeRead) {
    for (const char* name : {"ana/app/CLAUDE.md", "ana/app/AGENTS.md", "ana/app/in.md"})
        write(name, "@in.md @shut/x");
    write("ana/app/shut/x", "");
    makeFolder(folder.path("ana/.claude"));
    for (const char* name : {"ana/app/CLAUDE.md", "ana/app/in.md", "ana/app/shut", "ana/.claude"})
        ASSERT_EQ(chmod(folder.path(name).c_str(), 0), 0);
    EXPECT_TRUE(holdsForOrdinaryUser([&] {
        return scanned() == "r/ana/app/AGENTS.md !/ana/.claude/CLAUDE.md !/ana/app/CLAUDE.md !/ana/app/in.md "
                            "!/ana/app/shut/x";
    }));
    fs::remove_all(folder.path("ana"));
    write("ana/app/CLAUDE.md", "@in.md");
    EXPECT_TRUE(holdsForOrdinaryUser([&] {
        const rlimit descriptors{3, 3};
        return setrlimit(RLIMIT_NOFILE, &descriptors) == 0 && scanned() == "r/ana/app/CLAUDE.md";
    })) << "what cannot be opened just now may be read";
}

TEST_F(InstructionFileScannerTest, StopsAtDepthAndBudget) {
    for (int depth = 0; depth < 9; ++depth)
        write("ana/app/c" + std::to_string(depth), "@c" + std::to_string(depth + 1));
    write("ana/app/CLAUDE.md", "@c1");
    EXPECT_EQ(scan().repositoryFiles.size(), 6U);
    write("ana/app/CLAUDE.md", "@c1 @c3");
    EXPECT_EQ(scan().repositoryFiles.back().path, folder.path("ana/app/c7")) << "reached again from above";
    EXPECT_EQ(scan().repositoryFiles.size(), 8U);

    std::string bomb = "@c1 ";
    for (int index = 0; index < 300; ++index)
        bomb += "@out ";
    for (int index = 0; index < 400'000; ++index)
        bomb += "@/ ";
    for (int index = 0; index < 250; ++index)
        bomb += "@none ";
    link("ana/app/out", "/etc/passwd");
    for (const char* name : {"ana/app/last", "ana/app/beyond"})
        write(name, "");
    write("ana/app/CLAUDE.md", bomb + "@beyond");
    EXPECT_FALSE(scanned().ends_with("beyond")) << "c1 to c6 and 250 missing files use the 256 imports up";
    write("ana/app/CLAUDE.md", bomb.substr(0, bomb.size() - 6) + "@last @beyond");
    EXPECT_TRUE(scanned().ends_with("c5 r/ana/app/last"));
}

TEST_F(InstructionFileScannerTest, TellsWhereImportsLeadOut) {
    write("ana/app/CLAUDE.md", "@docs/in.md @docs/link.md @../absent.md @~/.claude/style.md @docs/deep/1.md");
    write("ana/app/docs/in.md", "@../../absent.md @/etc/motd");
    write("ana/out.md", "@never/asked.md");
    link("ana/app/docs/link.md", folder.path("ana/out.md"));
    link("ana/app/docs/last.md", folder.path("ana/last.md"));
    for (int depth = 1; depth < 5; ++depth)
        write("ana/app/docs/deep/" + std::to_string(depth) + ".md",
              "@" + std::to_string(depth + 1) + ".md" + (depth == 4 ? " @../link-5.md" : ""));
    write("ana/app/docs/deep/5.md", "@../last.md is too deep to be followed, but leads out");
    write("ana/.claude/CLAUDE.md", "@~/personal.md");
    write("ana/.claude/style.md", "@../elsewhere.md");

    const InstructionFileScanner scanner(folder.path("ana"), folder.path("ana/.claude"));
    const auto found = scanner.scanWithOutside(folder.path("ana/app"));
    EXPECT_EQ(found.files, scan());
    const std::vector<std::string> expected{"/etc/motd", folder.path("ana/.claude/style.md"),
                                            folder.path("ana/absent.md"), folder.path("ana/last.md"),
                                            folder.path("ana/out.md")};
    EXPECT_EQ(found.outside, expected);

    std::string many; // more than a scan follows, those that lead out last
    for (int i = 0; i < 300; ++i)
        many += "@in/" + std::to_string(i) + "\n";
    for (int i = 0; i < 300; ++i)
        many += "@../" + std::to_string(1'000 + i) + "\n";
    write("ana/many/CLAUDE.md", many);
    const auto bounded = scanner.scanWithOutside(folder.path("ana/many")).outside;
    ASSERT_EQ(bounded.size(), InstructionFileScanner::maximumOutsideTargets);
    EXPECT_EQ(bounded.back(), folder.path("ana/1255"));
}

TEST_F(InstructionFileScannerTest, ClimbsAtMost64Folders) {
    std::string path = "/h";
    for (int depth = 1; depth <= 70; ++depth)
        path += "/" + std::to_string(depth);
    const auto folders = ancestorDirectories(path, "/h");
    ASSERT_EQ(folders.size(), 64U);
    EXPECT_TRUE(folders.front().ends_with("/68/69"));
    EXPECT_TRUE(folders.back().ends_with("/5/6"));
    const auto isUnderRoot = [](const char* root) { return isUnder("/ab/c", root); };
    EXPECT_EQ(each(isUnderRoot, "/ab/c", "/ab", "/ab/", "/a", "/", "", "/ab/c/d"),
              "yes yes yes no yes no no");
}

/// What a scan of a tree without special files must find, computed from the tree's description alone.
struct TreeModel {
    std::string home;
    std::map<std::string, std::vector<std::string>> imports; ///< by file; paths of the targets
    std::map<std::string, std::string> links;                ///< whole paths
    std::map<std::string, int> depthOf;
    InstructionFileSet set;
    int followed = 0;

    [[nodiscard]] std::string resolved(const std::string& path) const {
        const auto place = links.find(path);
        return place == links.end() ? path : place->second;
    }
    void admit(const std::string& link, int depth, InstructionFileTier origin) {
        const std::string path = resolved(link);
        if (depth > 5 || !imports.contains(path)) return;
        const auto [known, isNew] = depthOf.try_emplace(path, depth);
        if (!isNew && known->second <= depth) return;
        known->second = depth;
        const bool isInside = path.starts_with(home + "/app/");
        if (isNew)
            set.files(isInside ? InstructionFileTier::repository : origin)
                .emplace_back(path, fs::file_size(path));
        for (const std::string& target : imports[path]) {
            const std::string place = resolved(target);
            if (!place.starts_with(home + "/app/") && !place.starts_with(home + "/.claude/")) continue;
            if (followed == 256) return;
            ++followed;
            admit(place, depth + 1, origin);
        }
    }
};

TEST_F(InstructionFileScannerTest, AgreesWithTheModelOnRandomTrees) {
    std::mt19937 random(424242);
    const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    for (int round = 0; round < 200; ++round) {
        TreeModel model{folder.path("t" + std::to_string(round)), {}, {}, {}, {}, 0};
        std::vector<std::string> paths;
        for (const char* name :
             {"/.claude/CLAUDE.md", "/app/CLAUDE.md", "/app/CLAUDE.local.md", "/app/AGENTS.md", "/CLAUDE.md",
              "/CLAUDE.local.md", "/missing.md", "/app/gone/missing.md"}) {
            paths.push_back(model.home + name);
        }
        const char* folders[] = {"/app/", "/app/docs/a b/", "/app/docs/é/", "/.claude/rules/", "/app2/"};
        for (std::size_t count = below(25) + 1; count > 0; --count) {
            paths.push_back(model.home + folders[below(5)] + "f" + std::to_string(count) +
                            (below(6) == 0 ? "l" : ""));
        }
        for (const std::string& path : paths) {
            if (path.ends_with("l"))
                model.links[path] = paths[below(6)];
            else if (!path.ends_with("missing.md") && below(8) > 0)
                model.imports[path];
        }
        const std::size_t mostImports = below(4) == 0 ? 60 : below(9) + 1; // beyond the budget at times
        for (auto& [path, targets] : model.imports) {
            std::string text(below(50), 'x');
            for (std::size_t count = below(mostImports); count > 0; --count) {
                const std::string target = paths[below(paths.size())];
                if (target.find(' ') != std::string::npos) continue;
                targets.push_back(target);
                const std::string relative =
                    fs::path(target).lexically_relative(fs::path(path).parent_path()).string();
                const std::string forms[] = {relative, target, "~/" + target.substr(model.home.size() + 1)};
                text += "\n- @" + forms[below(3)] + (below(2) == 0 ? "." : " x");
            }
            writeFile(path, text);
        }
        for (const auto& [path, target] : model.links) {
            fs::create_directories(fs::path(path).parent_path());
            fs::create_symlink(target, path);
        }
        using enum InstructionFileTier;
        model.admit(paths[0], 0, personal);
        for (std::size_t index = 1; index < 6; ++index)
            model.admit(paths[index], 0, inherited);
        const InstructionFileSet found =
            InstructionFileScanner(model.home, model.home + "/.claude").scan(model.home + "/app");
        ASSERT_EQ(described(found), described(model.set)) << "round " << round;
        ASSERT_EQ(found, model.set);
    }
}

/// The targets of a text of the file /r/docs/a.md of a user at home in /h, separated by blanks.
std::string targetsOf(std::string_view text) {
    std::string targets;
    InstructionImports::visitTargets(text, "/r/docs", "/h", [&](const std::string& target) {
        targets += (targets.empty() ? "" : " ") + target;
        return true;
    });
    return targets;
}

TEST(InstructionImports, PointToWhatFollowsAnAtSign) {
    EXPECT_EQ(targetsOf("Read @docs/a.md, then @b.md)"), "/r/docs/docs/a.md /r/docs/b.md");
    EXPECT_EQ(targetsOf("mail x@y.z (@file.md) @@c @scheme://p a lone @ end @"), "");
    EXPECT_EQ(targetsOf("@a\t@b\v@c\xC2\xA0@d\xE2\x80\xA8@e\xE2\x80\x8B@f"),
              "/r/docs/a /r/docs/b /r/docs/c /r/docs/d /r/docs/e\xE2\x80\x8B@f");
    EXPECT_EQ(targetsOf("@a.md.,;:!?)]}\"'`"), "/r/docs/a.md");
    EXPECT_EQ(targetsOf("@(a) @a@b @... a\b@c \x0e@d"), "/r/docs/(a /r/docs/a@b");
    EXPECT_EQ(targetsOf("@~ @~/ @~// @~//x.md @~x/../y"), "/h/x.md /h/y");
    EXPECT_EQ(targetsOf("@/a/./b/../c @../../../d @./e/"), "/a/c /d /r/docs/e");
    EXPECT_EQ(targetsOf("@é/日本.md, é@x"), "/r/docs/é/日本.md");
    EXPECT_EQ(targetsOf("one\r\n@two\r\n\r@three\r@four"), "/r/docs/two /r/docs/three /r/docs/four");
}

TEST(InstructionImports, AreIgnoredInsideOfClosedFences) {
    const auto names = [](std::string_view text) {
        std::string targets = targetsOf(text);
        for (std::size_t at = 0; (at = targets.find("/r/docs/")) != std::string::npos;)
            targets.erase(at, 8);
        return targets;
    };
    EXPECT_EQ(names("@a\n```\n@b\n```\n@c"), "a c");
    EXPECT_EQ(names("@a\r\n```sh\r\n@b\r\n``` @c\r\n@d"), "a d");
    EXPECT_EQ(names("```\n@a\n@b"), "a b");
    EXPECT_EQ(names("```\n@a\n~~~\n@b\n````@x\n@c\n~~~\n@d"), "c d");
    EXPECT_EQ(names("~~~\n@a\n ~~~\n@b\n\xC2\xA0\t```\n@c\n```x\n@d"), "b d");
    EXPECT_EQ(names("``\n@a\n``\nx```\n@b\n```"), "a b");
    EXPECT_EQ(names("```@a\n```@b\n~~~\n@c\n```\n@d"), "c d");
}

} // namespace
