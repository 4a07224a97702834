// JSON texts: what is written, what is refused, and that a refusal leaves the caller's value as it was.

#include "object/json_text.hpp"

#include <gtest/gtest.h>

namespace {

using namespace mk_api::string;

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

TEST(JsonText, IsOneLineWithKeysInByteOrderOrRefusedWithTheOutputKept) {
    json value;
    std::string text;
    EXPECT_EQ(Json_Deserialize("{ \"b\":[1, 2.5],\n \"\u00e9\":1, \"a\":" + nested(999) + "}", value), 0);
    EXPECT_EQ(Json_Serialize(value, text), 0);
    EXPECT_EQ(text, "{\"a\":" + nested(999) + ",\"b\":[1,2.5],\"\u00e9\":1}");
    for (const std::string& refused :
         {std::string(), std::string("[1] // comment"), std::string("\"\xff\""), nested(1001)})
        EXPECT_EQ(Json_Deserialize(refused, value), 1) << refused;
    EXPECT_EQ(value["b"][0], 1);
    EXPECT_TRUE(Json_Serialize(json::array({"\xff"}), text) == 1 &&
                Json_Serialize(json::array({value}), text) == 1);
    EXPECT_EQ(text.substr(0, 5), "{\"a\":");
}

} // namespace
