// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/LoadscopeCLI/DemoHome.h"
#include "tests/Support/Testing.h"

namespace {

/// What one computer measured is taken along to another.
struct HistoryTransferTest : testing::Test {
    const DemoHome home;
    const DemoHome other;
    const std::string kept = home.path() + "/kept.json";
};

TEST_F(HistoryTransferTest, TakesWhatAScanPrintedAndRecordedOnce) {
    const auto scan = home.run({"scan", "--json", "--include-codex"});
    ASSERT_EQ(scan.exitCode, 0) << scan.errors;
    const auto history = home.run({"history", "--json"});
    const auto report = scan.json();
    for (const auto& id : {report["id"], report["codex"]["id"]})
        EXPECT_THAT(history.output, HasSubstr(id.get<std::string>()));
    writeFile(kept, scan.output);
    const auto known = home.run({"history", "import", kept});
    EXPECT_EQ(known.output, "Took 0 scans; 2 were there already.\n") << known.errors;
    const auto taken = other.run({"history", "import", kept, kept});
    EXPECT_EQ(taken.output, "Took 2 scans; 2 were there already.\n") << taken.errors;
    EXPECT_EQ(other.run({"history", "--json"}).output, history.output);
}

TEST_F(HistoryTransferTest, ExportsAFileThatImportsWhole) {
    const auto none = home.run({"history", "export", "--output", kept});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(kept)) << "an empty history replaces nothing";
    ASSERT_EQ(home.run({"scan"}).exitCode, 0);
    const auto written = home.run({"history", "export", "--output", kept});
    EXPECT_EQ(written.exitCode, 0) << written.errors;
    const std::string file = home.path() + "/.local/share/Loadscope/scan-history.json";
    EXPECT_EQ(readFile(kept), readFile(file));
    EXPECT_EQ(home.run({"history", "export"}).output, readFile(file) + '\n');
    const auto itself = home.run({"history", "export", "--output", file});
    EXPECT_EQ(itself.exitCode, 2) << itself.errors;
    EXPECT_EQ(home.run({"history", "export", "--output", home.path()}).exitCode, 1);
    for (const char* form : {"export", "--json"}) {
        const auto piped = other.runShell("HOME='" + home.path() + "' XDG_DATA_HOME= \"$0\" history " + form +
                                          " | \"$0\" history import -");
        EXPECT_EQ(piped.exitCode, 0) << piped.errors;
    }
    EXPECT_EQ(other.run({"history", "export"}).output, readFile(file) + '\n');
    EXPECT_EQ(home.run({"history", "--tool=claude", "export"}).exitCode, 2);
}

TEST_F(HistoryTransferTest, TakesTheOthersWhenAFileCannotBeRead) {
    const auto unrecorded = home.run({"scan", "--json", "--no-history"});
    writeFile(kept, unrecorded.output);
    const std::string half = writeFile(home.path() + "/half\x1b.json", unrecorded.output.substr(0, 999));
    const auto run = other.run({"history", "import", half, kept, home.path() + "/none.json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "Took 1 scan; 0 were there already.\n2 files could not be read.\n");
    EXPECT_THAT(run.errors, AllOf(HasSubstr(".json is not a JSON object.\n"),
                                  HasSubstr("none.json does not exist.\n"), Not(HasSubstr("\x1b"))));
    EXPECT_EQ(other.run({"history", "--json"}).json()["scans"][0]["id"], unrecorded.json()["id"]);
    writeFile(other.path() + "/.local/share/file", "");
    const auto stuck =
        other.run({"history", "import", kept}, {"XDG_DATA_HOME=" + other.path() + "/.local/share/file"});
    EXPECT_EQ(stuck.exitCode, 1);
    EXPECT_THAT(stuck.errors, HasSubstr("The history could not be written; nothing was taken."));
}

} // namespace
