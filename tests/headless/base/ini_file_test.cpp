#include "headless/base/ini_file.hpp"

#include <gtest/gtest.h>

namespace headless {
namespace {

constexpr const char* sample = "top=0\r\n[One]\r\n a = 1 \nb=x=y\n\n; end\n[two]\na=2";

TEST(IniFile, FindsValuesRegardlessOfCaseAndBlanks) {
    EXPECT_EQ(ini_value(sample, "one", "A"), "1");
    EXPECT_EQ(ini_value(sample, "One", "b"), "x=y");
    EXPECT_EQ(ini_value(sample, "two", "a"), "2");
    EXPECT_EQ(ini_value(sample, "two", "b"), std::nullopt);
    EXPECT_EQ(ini_value(sample, "three", "a"), std::nullopt);
    EXPECT_EQ(ini_value(sample, "", "top"), std::nullopt);
    EXPECT_EQ(ini_value("", "a", "b"), std::nullopt);
    EXPECT_EQ(ini_value("[\n=\n[a", "a", "b"), std::nullopt);
}

TEST(IniFile, ChangesOneLineAlone) {
    EXPECT_EQ(with_ini_value("[a]\r\nx=1\r\ny=2\n", "A", "X", "3"), "[a]\r\nX=3\ny=2\n");
    EXPECT_EQ(with_ini_value("[a]\nx=1\n\n[b]\n", "a", "y", "2"), "[a]\nx=1\ny=2\n\n[b]\n");
    EXPECT_EQ(with_ini_value("[a]\nx=1", "b", "y", "2"), "[a]\nx=1\n[b]\ny=2\n");
    EXPECT_EQ(with_ini_value("[a]", "a", "y", "2"), "[a]\ny=2\n");
    EXPECT_EQ(with_ini_value("", "a", "y", ""), "[a]\ny=\n");
    EXPECT_EQ(with_ini_value("[a]\nx=1\ny=2\n", "a", "x", std::nullopt), "[a]\ny=2\n");
    EXPECT_EQ(with_ini_value("[a]\nx=1\n", "b", "x", std::nullopt), "[a]\nx=1\n");
}

} // namespace
} // namespace headless
