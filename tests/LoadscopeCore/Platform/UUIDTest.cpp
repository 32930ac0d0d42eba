// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/UUID.h"

#include "tests/Support/Testing.h"

#include <set>

namespace {

TEST(UUID, TakesTheCanonicalTextInAnyCase) {
    const std::string canonical = "0F8FAD5B-D9CB-469F-A165-70867728950E";
    for (const std::string_view text :
         {"0f8fad5b-d9cb-469f-a165-70867728950e", "0F8FAD5B-D9CB-469f-A165-70867728950E"})
        EXPECT_EQ(UUID::parse(text).value_or(UUID::generate()).text(), canonical);
    for (const std::string& text : {"{" + canonical + "}", canonical + "\n", canonical.substr(1),
                                    std::string(36, 'A'), "G" + canonical.substr(1), std::string()})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(UUID, GeneratesDistinctRandomIdentifiers) {
    std::set<UUID> seen;
    for (int round = 0; round < 1000; ++round) {
        const UUID uuid = UUID::generate();
        EXPECT_EQ(UUID::parse(uuid.text()), uuid);
        EXPECT_EQ(uuid.text()[14], '4');
        EXPECT_NE(std::string("89AB").find(uuid.text()[19]), std::string::npos);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

} // namespace
