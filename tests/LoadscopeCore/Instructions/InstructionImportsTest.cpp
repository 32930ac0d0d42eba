// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionImports.h"

#include "tests/Support/Testing.h"

namespace {

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
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"Read @docs/a.md, then @b.md)", "/r/docs/docs/a.md /r/docs/b.md"},
        {"mail x@y.z (@file.md) @@c @scheme://p a lone @ end @", ""},
        {"@a\t@b\xC2\xA0@c\xE2\x80\xA8@d\xE2\x80\x8B@e",
         "/r/docs/a /r/docs/b /r/docs/c /r/docs/d\xE2\x80\x8B@e"},
        {"@a.md.,;:!?)]}\"'`", "/r/docs/a.md"},
        {"@(a) @a@b @...", "/r/docs/(a /r/docs/a@b"},
        {"@~ @~/ @~// @~//x.md @~x/../y", "/h/x.md /h/y"},
        {"@/a/./b/../c @../../../d @./e/", "/a/c /d /r/docs/e"},
        {"@é/日本.md,", "/r/docs/é/日本.md"},
        {"one\r\n@two\r\n\r@three\r@four", "/r/docs/two /r/docs/three /r/docs/four"},
    };
    for (const auto& [text, targets] : cases)
        EXPECT_EQ(targetsOf(text), targets) << text;
}

TEST(InstructionImports, AreIgnoredInsideOfClosedFences) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"@a\n```\n@b\n```\n@c", "a c"},
        {"@a\r\n```sh\r\n@b\r\n```\r\n@c", "a c"},
        {"```\n@a\n@b", "a b"},
        {"```\n@a\n~~~\n@b\n````@x\n@c\n~~~\n@d", "c d"},
        {"~~~\n@a\n ~~~\n@b\n\xC2\xA0\t```\n@c\n```x\n@d", "b d"},
        {"``\n@a\n``\nx```\n@b\n```", "a b"},
        {"```@a\n```@b\n~~~\n@c\n```\n@d", "c d"},
    };
    for (const auto& [text, names] : cases) {
        std::string targets;
        for (const char name : names)
            targets += name == ' ' ? " " : std::string("/r/docs/") + name;
        EXPECT_EQ(targetsOf(text), targets) << text;
    }
}

} // namespace
