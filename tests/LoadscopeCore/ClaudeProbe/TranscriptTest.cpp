// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/Transcript.h"

#include "tests/Support/Testing.h"

namespace {

std::string assistantLine(const std::string& usage) {
    return R"({"type":"assistant","message":{"usage":)" + usage + "}}";
}

TEST(TranscriptLocator, FindsASessionAtAnyDepthButNotInHiddenFoldersNorThroughLinks) {
    const TemporaryFolder folder;
    const std::string root = makeFolder(folder.path("projects"));
    const std::string found = writeFile(root + "/-src-app/deeper/abc.jsonl", "");
    writeFile(root + "/.hidden/secret.jsonl", "");
    writeFile(root + "/visible/.dot.jsonl", "");
    writeFile(folder.path("outside/linked.jsonl"), "");
    std::filesystem::create_directory_symlink(folder.path("outside"), root + "/link");
    std::filesystem::create_directory_symlink(root, root + "/loop");
    std::filesystem::create_directory_symlink(root, folder.path("link to projects"));

    EXPECT_EQ(TranscriptLocator::find("abc", root), found);
    EXPECT_EQ(TranscriptLocator::find("abc", folder.path("link to projects")),
              folder.path("link to projects/-src-app/deeper/abc.jsonl"));
    for (const std::string session :
         {"ABC", "ab", "", "secret", ".dot", "linked", "deeper/abc", "../projects/-src-app/deeper/abc"})
        EXPECT_EQ(TranscriptLocator::find(session, root), std::nullopt) << session;
    EXPECT_EQ(TranscriptLocator::find(std::string("abc\0", 4), root), std::nullopt);
    EXPECT_EQ(TranscriptLocator::find("abc", folder.path("missing")), std::nullopt);
    EXPECT_EQ(TranscriptLocator::find("abc", found), std::nullopt);
}

TEST(TranscriptReader, TakesTheFirstUsableAssistantLine) {
    const std::string usage =
        R"({"input_tokens":2,"cache_creation_input_tokens":500,"cache_read_input_tokens":12000})";
    const std::string good = assistantLine(usage);
    const std::string later = assistantLine(R"({"input_tokens":99999})");
    const ProbeUsage expected{2, 500, 12000, 0};
    const std::vector<std::pair<std::string, std::optional<ProbeUsage>>> cases{
        {"{\"type\":\"user\",\"message\":{\"usage\":" + usage + "}}\n{\"type\":\"assistant\"}\n" + good +
             "\n" + later,
         expected},
        {assistantLine(R"({"output_tokens":5})") + "\n" + good, expected},
        {"{\"type\":\n\xff\xfe\n\n[1]\nnull\n\"x\"\n" + good + "\r\n" + later, expected},
        {"{\"text\":\"" + std::string(200'000, 'x') + "\"}\n" + good + "\n", expected}, // over many pieces
        {std::string(65'530, '\n') + good + "\n" + later, expected},                    // across two pieces
        {assistantLine("[]") + "\n{\"type\":\"assistant\",\"message\":[]}", {}},
        {R"({"type":["assistant"],"message":{"usage":)" + usage + "}}", {}},
        {"", {}}};
    const TemporaryFolder folder;
    for (const auto& [text, result] : cases) {
        EXPECT_EQ(TranscriptReader::firstAssistantUsageInTranscript(text), result) << text.substr(0, 99);
        EXPECT_EQ(TranscriptReader::firstAssistantUsageAtPath(writeFile(folder.path("t.jsonl"), text)),
                  result)
            << text.substr(0, 99);
    }
}

TEST(TranscriptReader, PassesOverLinesThatAreTooLong) {
    const TemporaryFolder folder;
    const auto line = [](const std::string& tokens) {
        return R"({"type":"assistant","message":{"usage":{"input_tokens":)" + tokens + "}}}\n";
    };
    const std::string spaces(Json::maximumSize + 100'000, ' ');
    const std::string path = writeFile(folder.path("long"), spaces + line("1") + line("2"));
    EXPECT_EQ(TranscriptReader::firstAssistantUsageAtPath(path), (ProbeUsage{2, 0, 0, 0}));
    writeFile(path, spaces + spaces + "{");
    EXPECT_EQ(TranscriptReader::firstAssistantUsageAtPath(path), std::nullopt);
}

TEST(TranscriptReader, ReadsNothingButRegularFiles) {
    const TemporaryFolder folder;
    const std::string file = writeFile(folder.path("file"), assistantLine(R"({"input_tokens":7})"));
    std::filesystem::create_symlink(file, folder.path("link"));
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);

    EXPECT_EQ(TranscriptReader::firstAssistantUsageAtPath(folder.path("link")), (ProbeUsage{7, 0, 0, 0}));
    for (const std::string& path :
         {folder.path("fifo"), folder.path(), folder.path("missing"), std::string("/dev/zero")})
        EXPECT_EQ(TranscriptReader::firstAssistantUsageAtPath(path), std::nullopt) << path;
}

} // namespace
