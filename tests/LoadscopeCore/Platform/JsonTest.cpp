// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/Json.h"

#include "tests/Support/Testing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace std::string_literals;

std::string nested(std::size_t depth, std::string_view open, char close) {
    std::string text;
    for (std::size_t index = 0; index < depth; ++index)
        text += open;
    return text + "1" + std::string(depth, close);
}

TEST(Json, AcceptsExactlyOneStrictDocument) {
    for (const std::string& text :
         {std::string(R"({"a":[2.5,"\u00e9\"]",null]})"), std::string(" [] \n"), std::string("\"[[{\\\"{\""),
          '"' + std::string(1000, '[') + '"', nested(512, "[", ']'), nested(512, "{\"a\":", '}')})
        EXPECT_TRUE(Json::parse(text)) << text.substr(0, 40);
    const auto parse = [](std::string_view text) { return Json::parse(text); };
    EXPECT_EQ(taken(parse, "", "{} {}", "{}x", "{}\0", "{}\0x", "[\"\\\0\"]", "{\"a\":1,}", "[1] //",
                    "{'a':1}", "[NaN]", "[01]", "[\"\xFF\"]", "[\"\n\"]", "[\"open", "]]]]", R"(["\ud8"])",
                    R"(["\ud83d)", "[1e400", "[1e]", "[--1e400]"),
              "");
    for (const std::size_t depth : {513U, 1'000'000U})
        EXPECT_FALSE(Json::parse(nested(depth, "[", ']')) || Json::parse(nested(depth, "{\"a\":", '}')));
    EXPECT_FALSE(Json::parse(std::string(100'000, '[')));
}

TEST(Json, ReadsWhatAParserRefusesAlthoughTheGrammarAllowsIt) {
    const auto text = [](const char* json) {
        const auto value = Json::parse(json);
        return value && value->is_string() ? value->get<std::string>() : "unreadable";
    };
    EXPECT_EQ(each(text, R"("a\ud83d")", R"("\ude00b")", R"("\ud83d\ude00")", R"("\ud83d\ud83d\ude00")",
                   R"("\ud83d\n\\ud83d")", R"("\uD83Dx 1e400")", R"("\ud800\udc00\udbff\udfff\ud83d")",
                   R"("\ud7ff\ue000\udfff\udc00")"),
              "a\uFFFD \uFFFDb 😀 \uFFFD😀 \uFFFD\n\\ud83d \uFFFDx 1e400 \U00010000\U0010FFFF\uFFFD "
              "\ud7ff\ue000\uFFFD\uFFFD");
    const auto object =
        Json::parse(R"({"big":1e400,"low":-1e999,"small":1e-400,"tiny":0.0e-999,"total":7,"half":"\ud800"})");
    ASSERT_TRUE(object);
    const auto number = [&](const char* key) { return Json::integral(Json::member(*object, key)); };
    EXPECT_EQ(each(number, "big", "low", "small", "total", "half", "tiny"), "none none 0 7 none 0");
}

TEST(Json, ReadsNoMoreThanAnyReportHas) {
    const auto array = [](std::size_t commas) {
        std::string text = "[\",,,,\",0";
        for (std::size_t count = 1; count < commas; ++count)
            text += ",0";
        return text + "]";
    };
    EXPECT_TRUE(Json::parse(array(Json::maximumParts - 1)));
    EXPECT_FALSE(Json::parse(array(Json::maximumParts)));
    EXPECT_TRUE(Json::parse(array(Json::maximumParts), Json::Extent::any));
    const std::string longest = '"' + std::string(Json::maximumSize - 2, 'x') + '"';
    EXPECT_TRUE(Json::parse(longest));
    EXPECT_FALSE(Json::parse(longest + ' '));
}

TEST(Json, ReadsMembersOnlyOfObjects) {
    const auto object = Json::parseObject(" \u00a0{\"o\":{\"n\":1},\"a\":[],\"z\":null}\r\n");
    ASSERT_TRUE(object);
    EXPECT_FALSE(Json::parseObject("[{}]"));
    EXPECT_EQ(Json::integral(Json::member(*Json::objectMember(*object, "o"), "n")), 1);
    EXPECT_EQ(Json::objectMember(*object, "a"), nullptr);
    EXPECT_TRUE(Json::member(*object, "z")->is_null());
    EXPECT_EQ(Json::member(*object, "none"), nullptr);
    EXPECT_EQ(Json::member(*Json::member(*object, "a"), "o"), nullptr);
}

/// Puts a list back together as plain parsing would have it, but for what a reader is not told.
class Collector : public Json::ElementReader {
public:
    void beginList() override { list = Json::Value::array(); }
    void field(std::string_view key, Json::Value value) override { element_[key] = std::move(value); }
    void endElement() override { list.push_back(std::exchange(element_, Json::Value::object())); }
    Json::Value list = Json::Value::array();

private:
    Json::Value element_ = Json::Value::object();
};

TEST(Json, HandsAListOverAndKeepsTheRest) {
    for (const char* text :
         {R"({"a":1,"d":{"m":[{"n":"x","t":-2},{},{"n":2.5,"n":"y"}],"o":[{"m":[1]}]},"m":[3]})",
          R"({"d":{"m":[1,[{"n":1}],{"n":{"n":[1]},"o":[{"p":2}],"t":true},null]},"z":{"m":[{"n":1}]}})",
          R"({"d":[{"m":[{"n":1}]}],"x":[["m",[1]]]})", R"({"d":{"m":{"n":1}}})", R"({"d":{"o":{"m":[{}]}}})",
          R"({"d":{"m":[{"n":1}]},"d":{"m":[{"n":2}]}})", R"({"d":{"m":[{"n":1}],"m":[]}})",
          R"({"d":{"m":[{"n":"\ud800"}]},"e":1e999})", R"({"d":{"m":[]}} x)", R"({"d":{"m":[{]})",
          R"([{"d":{"m":[{}]}}])", "7", ""}) {
        Collector collector;
        auto value = Json::parseObject(text, "d", "m", collector);
        auto expected = Json::parseObject(text);
        ASSERT_EQ(value.has_value(), expected.has_value()) << text;
        if (!value) continue;
        const auto listOf = [](Json::Value& document) -> Json::Value* {
            if (!document.contains("d") || !document["d"].is_object()) return nullptr;
            auto& outer = document["d"];
            return outer.contains("m") && outer["m"].is_array() ? &outer["m"] : nullptr;
        };
        if (Json::Value* const list = listOf(*expected)) {
            Json::Value objects = Json::Value::array();
            for (Json::Value element : *list) {
                if (!element.is_object()) continue;
                for (Json::Value& field : element)
                    if (field.is_structured()) field = nullptr;
                objects.push_back(element);
            }
            EXPECT_EQ(collector.list, objects) << text;
            *list = Json::Value::array();
        }
        EXPECT_EQ(*value, *expected) << text;
    }
}

TEST(Json, TakesIntegralNumbersThatFit) {
    const auto number = [](const std::string& text) {
        return Json::integral(&Json::parse("[" + text + "]")->front());
    };
    EXPECT_EQ(
        each(number, "0", "-7", "2.0", "-0.0", "1e3", "9223372036854775807", "-9223372036854775808",
             "-9223372036854775808.0", "9223372036854774784.0"),
        "0 -7 2 0 1000 9223372036854775807 -9223372036854775808 -9223372036854775808 9223372036854774784");
    EXPECT_EQ(taken(number, "2.5", "true", "\"1\"", "null", "9223372036854775808", "18446744073709551616",
                    "9223372036854775808.0", "-9223372036854777856.0", "1e300", "[1]"),
              "");
    EXPECT_EQ(Json::integral(nullptr), std::nullopt);
}

} // namespace
