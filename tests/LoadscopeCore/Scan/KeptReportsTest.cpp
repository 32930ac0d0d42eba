// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/KeptReports.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

std::shared_ptr<const ScanReport> reportOf(const std::string& path, std::size_t nameLength = 0) {
    ScanReport report;
    report.repositoryPath = path;
    report.details.members.emplace_back().name = std::string(nameLength, 'x');
    return std::make_shared<const ScanReport>(std::move(report));
}

TEST(KeptReports, HoldTheNewestOfEachFolderWithinTheirBounds) {
    KeptReports kept;
    for (int i = 0; i < 20; ++i)
        kept.keep({reportOf("/" + std::to_string(i)), nullptr});
    const auto again = reportOf("/0");
    kept.keep({again, nullptr});
    EXPECT_EQ(kept.count(), 20U);
    EXPECT_EQ(kept.find("/0")->report, again);
    kept.keep({reportOf("/20"), nullptr});
    EXPECT_EQ(kept.count(), 20U);
    EXPECT_EQ(kept.find("/1"), nullptr) << "was scanned longest ago";
    EXPECT_NE(kept.find("/0"), nullptr);
    EXPECT_NE(kept.find("/2"), nullptr);

    KeptReports few(100'000);
    few.keep({reportOf("/a", 40'000), nullptr});
    few.keep({reportOf("/b", 40'000), nullptr});
    EXPECT_EQ(few.count(), 2U);
    few.keep({reportOf("/c", 40'000), nullptr});
    EXPECT_EQ(few.find("/a"), nullptr);
    EXPECT_NE(few.find("/b"), nullptr);
    few.keep({reportOf("/d", 400'000), nullptr});
    EXPECT_EQ(few.count(), 1U) << "the newest stays however large it is";
    EXPECT_NE(few.find("/d"), nullptr);
}

} // namespace
} // namespace loadscope
