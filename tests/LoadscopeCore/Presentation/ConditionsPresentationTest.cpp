// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"

#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

/// English numbers, whatever the machine's locale.
class ConditionsPresentationTest : public testing::Test {
protected:
    void SetUp() override { LocaleFormat::setLocale("en_US"); }
    void TearDown() override { LocaleFormat::setLocale(""); }

    static ScanReport reportOf(const MeasurementConditions& conditions) {
        ProbeResult probe{"5e551011",    18900, TotalSource::contextCommand, {{"Skills", 20000}}, 3,
                          "/bin/claude", 200000};
        probe.conditions = conditions;
        return ScanReportBuilder::build(RepoSelection("/src/app"), probe, {},
                                        CodexScanOutcome::measured({7, 200000, 1, "0.169.0", "gpt-5"}));
    }
};

TEST_F(ConditionsPresentationTest, SaysHowATotalWasMeasured) {
    MeasurementConditions conditions;
    EXPECT_THAT(ConditionsPresentation::lines(conditions),
                ElementsAre("Tool: Claude Code, version not known.",
                            "Model: sonnet was asked for; the report names none.",
                            "PATH: the one that this program was started with.",
                            "Environment: nothing was removed."));
    EXPECT_THAT(ConditionsPresentation::notes(reportOf(conditions)), testing::IsEmpty());
    conditions = {.requestedModel = "opus",
                  .model = "claude-opus-4",
                  .toolVersion = "2.1.330",
                  .waitedForServers = true,
                  .keptEnvironment = true,
                  .removedVariables = {"CLAUDECODE", "CLAUDE_CODE_X"},
                  .keptVariables = {"ANTHROPIC_API_KEY"},
                  .pathSource = SearchPathSource::shell};
    EXPECT_THAT(ConditionsPresentation::lines(conditions),
                ElementsAre("Tool: Claude Code 2.1.330.",
                            "Model: opus was asked for; the report names claude-opus-4.",
                            "PATH: the one that your shell sets.",
                            "Environment: passed on, with the variables that sign in; removed CLAUDECODE, "
                            "CLAUDE_CODE_X; kept ANTHROPIC_API_KEY.",
                            "Servers: the tool was told to wait for slow ones."));
    EXPECT_THAT(ConditionsPresentation::measurementNote(conditions), HasSubstr("` run (model opus) started"));
}

TEST_F(ConditionsPresentationTest, NotesWhatATotalCannotBeTrustedWith) {
    struct Case {
        const char* name;
        MeasurementConditions conditions;
        const char* note;
        const char* key;
    };
    const Case cases[] = {
        {"accepted", {.isEstimate = true}, "estimated this total instead of counting it", "estimate"},
        {"not told",
         {.mayBeEstimate = true},
         "could not be told whether Claude Code counted",
         "mayBeEstimate"},
        {"silent shell",
         {.pathSource = SearchPathSource::shellDidNotAnswer},
         "may be missing from this total",
         "searchPath"},
        {"reserve",
         {.takenOff = ReservedSpace{"Autocompact buffer", 45000}},
         "The report's total of 63,900 includes 45,000 tokens of \"Autocompact buffer\", which is reserved "
         "space: taken off.",
         "reserve"},
        {"endless reserve",
         {.takenOff = ReservedSpace{"R", std::numeric_limits<std::int64_t>::max()}},
         "total of 9,223,372,036,854,775,807 includes",
         "reserve"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const ScanReport report = reportOf(one.conditions);
        EXPECT_THAT(ConditionsPresentation::notes(report), ElementsAre(HasSubstr(one.note)));
        const auto notes = Json::parse(ScanReportJson::report(report)).value()["notes"];
        EXPECT_THAT(notes[one.key].get<std::string>(), HasSubstr(one.note));
        EXPECT_EQ(std::ranges::count_if(notes, &Json::Value::is_string), 3) << "measurement, rows, this one";
    }
}

TEST_F(ConditionsPresentationTest, CallsAnEstimateSoWhereverTheTotalIsExplained) {
    const ScanReport report = reportOf({.isEstimate = true});
    std::vector<std::string> texts = ScanPresentation::summaryLines(report);
    EXPECT_EQ(texts[1],
              "Total: 18,900 tokens — an estimate, not counted, reported by Claude (Claude Code's own "
              "`/context` report).");
    texts.erase(texts.begin() + 3); // Codex has a number of its own
    texts.insert(texts.end(),
                 {ScanPresentation::totalCaption(report), ScanPresentation::totalSourceLine(report),
                  ScanPresentation::bandVerdictLine(report),
                  ScanPresentation::sourceLabel(report, Provenance::selfReported),
                  ScanPresentation::overAttributionNote(report).value()});
    EXPECT_THAT(texts, Not(Contains(testing::AnyOf(HasSubstr("uthoritative"), HasSubstr("measured by"),
                                                   HasSubstr("measured total")))));
    for (const std::size_t at : {1U, 3U, 5U, 6U, 7U, 8U, 9U})
        EXPECT_THAT(texts[at], HasSubstr("stimate")) << at;
    EXPECT_EQ(ScanPresentation::sourceLabel(report, Provenance::remainder),
              sourceLabel(Provenance::remainder));
    EXPECT_EQ(ScanPresentation::totalCaption(reportOf({})), "Authoritative · measured by Claude");
}

TEST_F(ConditionsPresentationTest, TellsScriptsTheSame) {
    MeasurementConditions conditions{.requestedModel = "a\nb\xff",
                                     .model = "claude-x",
                                     .toolVersion = "2.1.330",
                                     .waitedForServers = true,
                                     .removedVariables = {"ANTHROPIC_API_KEY"},
                                     .keptVariables = {"CLAUDE_CONFIG_DIR"},
                                     .pathSource = SearchPathSource::shell,
                                     .isEstimate = true,
                                     .takenOff = ReservedSpace{"Reserved", 5}};
    const ScanReport report = reportOf(conditions);
    const Json::Value expected = Json::parse(R"json({"toolVersion": "2.1.330", "requestedModel": "a\nb\ufffd",
        "model": "claude-x", "estimated": true, "mayBeEstimated": false,
        "reservedTakenOff": {"name": "Reserved", "tokens": 5}, "environment": {"removed": ["ANTHROPIC_API_KEY"],
        "kept": ["CLAUDE_CONFIG_DIR"], "passedOn": false, "pathSource": "shell", "waitedForServers": true}})json")
                                     .value();
    const Json::Value object = Json::parse(ScanReportJson::report(report)).value();
    for (const auto& [key, value] : expected.items())
        EXPECT_EQ(object.value(key, Json::Value("absent")), value) << key;
    EXPECT_EQ(object["codex"]["toolVersion"], "0.169.0");
    EXPECT_EQ(object["codex"]["model"], "gpt-5");
    EXPECT_EQ(std::ranges::count(ScanPresentation::copyableSummary(report), '\n'), 7);
    const auto usual = Json::parse(ScanReportJson::report(reportOf({}))).value();
    for (const char* key : {"toolVersion", "model", "reservedTakenOff"})
        EXPECT_TRUE(usual.value(key, Json::Value("absent")).is_null()) << key;
    EXPECT_EQ(usual["environment"]["pathSource"], "inherited");
}

} // namespace
