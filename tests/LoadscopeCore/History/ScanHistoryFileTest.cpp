// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryFile.h"

#include "LoadscopeCore/Platform/Text.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

namespace {

using ScanHistoryFile::decode;
using ScanHistoryFile::Unreadable;

const std::string example = R"({
  "scans" : [
    {
      "categories" : [
        {
          "name" : "System prompt",
          "tokens" : 3104
        }
      ],
      "contextWindow" : 200000,
      "date" : "2026-11-16T20:31:31Z",
      "id" : "3F2504E0-4F89-41D3-9A0C-0305E82C3301",
      "repositoryName" : "web-app",
      "repositoryPath" : "\/home\/dev\/src\/web-app",
      "tool" : "claude",
      "total" : 18342
    },
    {
      "categories" : [],
      "date" : "2026-11-16T20:31:58Z",
      "id" : "9C1D7A52-0B3E-4C8E-8F6A-2B7D5E4F1A90",
      "model" : "gpt-5.1-codex",
      "repositoryName" : "web-app",
      "repositoryPath" : "\/home\/dev\/src\/web-app",
      "tool" : "codex",
      "toolVersion" : "0.169.0",
      "total" : 12877
    }
  ],
  "version" : 1
})";

/// The example with the first occurrence of FROM in "FROM=TO" replaced by TO.
std::string edited(std::string_view edit) {
    std::string text = example;
    const std::string_view from = edit.substr(0, edit.find('='));
    return text.replace(text.find(from), from.size(), edit.substr(from.size() + 1));
}

std::vector<RecordedScan> decoded(const std::string& text) {
    const auto result = decode(text);
    const auto* scans = std::get_if<std::vector<RecordedScan>>(&result);
    EXPECT_TRUE(scans) << text.substr(0, 2000);
    return scans ? *scans : std::vector<RecordedScan>();
}

TEST(ScanHistoryFile, WritesWhatItReadToTheByte) {
    EXPECT_EQ(ScanHistoryFile::encode(decoded(example)), example);
    EXPECT_EQ(decoded(example).at(1).toolVersion, "0.169.0");
    EXPECT_EQ(decoded(example).at(1).model, "gpt-5.1-codex");
    EXPECT_EQ(ScanHistoryFile::encode({}), "{\n  \"scans\" : [],\n  \"version\" : 1\n}");
    const RecordedScan hostile =
        record(1, "a\x01\"\\\n/\u00e9\xff", day(1) + std::chrono::milliseconds(999), 0);
    const std::string text = ScanHistoryFile::encode({hostile});
    EXPECT_THAT(text, HasSubstr("\"repositoryName\" : \"a\\u0001\\\"\\\\\\n\\/\u00e9\ufffd\""));
    EXPECT_EQ(decoded(text).at(0).repositoryName, Text::repaired(hostile.repositoryName));
    EXPECT_EQ(decoded(text).at(0).date, day(1));
}

TEST(ScanHistoryFile, RefusesWhatItDoesNotWhollyUnderstand) {
    const auto refusal = [](std::string_view text) -> std::optional<std::string> {
        const auto result = decode(text);
        const auto* reason = std::get_if<Unreadable>(&result);
        if (reason == nullptr) return std::nullopt;
        return *reason == Unreadable::corrupt ? "corrupt" : "version";
    };
    const auto isNotCorrupt = [&](std::string_view text) { return refusal(text) != "corrupt"; };
    const auto isNotCorruptWith = [&](std::string_view edit) { return refusal(edited(edit)) != "corrupt"; };
    EXPECT_EQ(taken(isNotCorrupt, "\xff\xfe", "[]", R"({"scans":[]})", R"({"version":1})",
                    R"({"version":1,"scans":{}})", R"({"version":1,"scans":[1]})",
                    R"({"version":"1","scans":[]})", R"({"version":1.5,"scans":[]})"),
              "");
    EXPECT_EQ(taken(isNotCorruptWith, "18342=18342.5", "18342=\"1\"", "18342=true",
                    "18342=9223372036854775808", "18342=-92233720368547758090", "200000=\"200000\"",
                    "\"claude\"=1", "\"0.169.0\"=169", "\"gpt-5.1-codex\"=[]", "\"tokens\"=\"x\"",
                    "\"System prompt\"=1", "3F2504E0=3F2504E", "\"id\"=\"x\"", "\"repositoryName\"=\"x\"",
                    "\"repositoryPath\"=\"x\"", "\"categories\"=\"x\"", "\"date\"=\"x\"", "\"total\"=\"x\"",
                    "web-app=web\xff", "\"version\" : 1\n}=\"version\" : 1} x",
                    "\"total\" : 18342=\"total\" : 18342, \"repositoryPathBytes\" : 1"),
              "");
    EXPECT_EQ(
        each(refusal, R"({"version":2,"scans":{"a":7}})", R"({"version":3})", R"({"version":0,"scans":[]})"),
        "version version version");
    for (const char filler : {'x', '['})
        EXPECT_EQ(refusal(std::string(50 << 20, filler)), "corrupt") << filler;
    for (std::size_t length = 0; length < example.size(); ++length)
        EXPECT_EQ(refusal(example.substr(0, length)), "corrupt") << length;
}

TEST(ScanHistoryFile, ReadsWhatDiffersWithoutHarm) {
    const std::vector<RecordedScan> original = decoded(example);
    for (const char* edit :
         {"\"tool\" : \"claude\",=", "\"tool\" : \"claude\"=\"tool\" : null, \"toolVersion\" : null",
          "\"tool\" : \"claude\"=\"tool\" : \"claude\", \"model\" : null",
          "\"date\"=\"later\" : {\"a\": [1]}, \"date\"", "18342=18342.0", "3F25=3f25",
          "\"categories\" : [],=\"categories\" : [], \"contextWindow\" : null,",
          "\"version\" : 1=\"version\" : 1.0"})
        EXPECT_EQ(decoded(edited(edit)), original) << edit;
    EXPECT_EQ(decoded(edited("\"claude\"=\"gemini\"")).at(0).tool, "gemini");
    EXPECT_EQ(decoded(edited("9C1D7A52-0B3E-4C8E-8F6A-2B7D5E4F1A90=" + original.at(0).id.text())).size(), 2U);
}

TEST(ScanHistoryFile, TellsFoldersApartWhoseNamesAreNoText) {
    std::vector<RecordedScan> scans;
    for (const char* path : {"/src/50%\xff", "/src/50%\xfe", "/src/50%\ufffd"})
        scans.emplace_back(record(1, "a", day(1), 1)).repositoryPath = path;
    const std::string text = ScanHistoryFile::encode(scans);
    EXPECT_EQ(decoded(text), scans);
    EXPECT_THAT(text, HasSubstr("\"repositoryPath\" : \"\\/src\\/50%\ufffd\",\n      \"repositoryPathBytes\" "
                                ": \"\\/src\\/50%25%FF\","));
    for (const char* bytes : {"/src/other%FF", "/src/50%25%F", "/src/50%25%fg", "50 %", ""}) {
        std::string changed = text;
        changed.replace(changed.find(R"(\/src\/50%25%FF)"), 15, bytes);
        EXPECT_EQ(decoded(changed).at(0).repositoryPath, scans[2].repositoryPath) << bytes;
    }
    EXPECT_EQ(decoded(edited(R"(src\/web-app=src\/web-app\/\/)")), decoded(example))
        << "one folder, written in two ways";
}

TEST(ScanHistoryFile, ReadsInternetDatesAndNoOthers) {
    const auto utc = [](const std::string& date) {
        return ScanHistoryFile::iso8601(decoded(edited("2026-11-16T20:31:31Z=" + date)).at(0).date);
    };
    EXPECT_EQ(each(utc, "2026-11-16T22:01:31+01:30", "2026-12-31T23:59:59-00:01", "2026-11-17T20:00:00+23:59",
                   "2026-11-16T20:00:00-05:00", "2024-02-29T00:00:00Z", "1969-12-31T23:59:59Z"),
              "2026-11-16T20:31:31Z 2027-01-01T00:00:59Z 2026-11-16T20:01:00Z 2026-11-17T01:00:00Z "
              "2024-02-29T00:00:00Z 1969-12-31T23:59:59Z");
    const auto isRead = [](const std::string& date) {
        return std::holds_alternative<std::vector<RecordedScan>>(
            decode(edited("2026-11-16T20:31:31Z=" + date)));
    };
    EXPECT_EQ(taken(isRead, "2026-02-29T00:00:00Z", "2026-13-01T00:00:00Z", "2026-01-01T24:00:00Z",
                    "2026-01-01T23:59:60Z", "2026-01-01T00:00:00", "2026-01-01", "2026-01-01T00:00:00.5Z",
                    "2026-01-01 00:00:00Z", "2026-01-01T00:00:00+24:00", "2026-01-01T00:00:00+0100",
                    "2026-01-01T-1:00:00Z", "2026-01-01T00:60:00Z", "2026-01-01T00:00:00+00:60",
                    "2026-01-01T00:00:00+-1:00", "2026-01-01T00:00:00+01:-1", "2026-01-01T00:00:00 01:00",
                    "2026-01-01T00:00:00+01.00", "2026-00-01T00:00:00Z", "2026-01-00T00:00:00Z",
                    "2026-01-01T00:00:00ZZ", "0001-01-01T00:00:00Z", "9999-12-31T23:59:59Z", ""),
              "");
}

} // namespace
