// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanHtml.h"

#include "LoadscopeCore/Presentation/ScanCsv.h"

#include <gmock/gmock.h>

namespace loadscope {
namespace {

using namespace testing;

ScanReport hostile() {
    const std::string name = "<script>alert('x')</script>\"&\x1b[31m\xff";
    ScanReport report;
    report.repositoryName = name;
    report.repositoryPath = "/src/" + name;
    report.total = 45'000;
    report.rows.push_back({name, 1'234, Provenance::claudeReported, 0});
    report.details.members.push_back({"=HYPERLINK(1)", "a,b", name, 447, CountPrecision::exact});
    report.details.members.push_back({"-t", "+g", "@n", 20, CountPrecision::below, true});
    report.fileSet.repositoryFiles.emplace_back("/src/" + name + "/CLAUDE.md", 400);
    return report;
}

TEST(ScanHtml, ShowsWhateverNamesHoldAsText) {
    const std::string page = ScanHtml::report(hostile());
    EXPECT_THAT(page, AllOf(StartsWith("<!DOCTYPE html>"), EndsWith("</html>\n"), HasSubstr("1,234"),
                            HasSubstr("&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;&quot;&amp;\\x1b[31m"),
                            HasSubstr("not counted"), HasSubstr("CLAUDE.md")));
    // Of its own: nothing runs, nothing is fetched.
    for (const char* forbidden : {"<script", "http:", "https:", "src=", "href=", "url(", "\x1b", "\xff"})
        EXPECT_EQ(page.find(forbidden), std::string::npos) << forbidden;
}

TEST(ScanCsv, HoldsNoFormulaAndEveryLineItsCells) {
    const std::string table = ScanCsv::report(hostile());
    EXPECT_THAT(table, AllOf(StartsWith("kind,table,group,name,tokens,precision,counted\r\ntotal,"),
                             HasSubstr("\r\nmember,'=HYPERLINK(1),\"a,b\","),
                             HasSubstr("\r\nmember,'-t,'+g,'@n,20,below,no\r\n"),
                             HasSubstr(",100,estimate,yes\r\n")));
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 6);
}

} // namespace
} // namespace loadscope
