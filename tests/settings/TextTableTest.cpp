#include "sentrel/settings/TextTable.h"

#include <gtest/gtest.h>

#include <string>

namespace sentrel {
namespace {

TEST(TextTables, TellTextsApartByEveryByte) {
  for (std::size_t length = 0; length <= 40; ++length) {
    SCOPED_TRACE(length);
    TextTable table;
    const std::string text(length, 'a');
    EXPECT_TRUE(table.add(text));
    EXPECT_EQ(table.find(text), 0U);
    EXPECT_EQ(table.find(text + "a"), std::nullopt);
    for (std::size_t i = 0; i < length; ++i) {
      std::string other = text;
      other[i] = 'b';
      EXPECT_EQ(table.find(other), std::nullopt) << i;
    }
  }
}

/// So many that dozens of pairs share their hash, and differ in nothing but one word of eight
/// bytes.
TEST(TextTables, KeepTextsApartThatShareTheirHash) {
  const std::string rest = "a.com.example.abc";
  for (const bool isFirst : {false, true}) {
    TextTable table;
    for (int i = 1'000'000; i < 1'500'000; ++i) {
      const std::string number = std::to_string(i);
      ASSERT_TRUE(table.add(isFirst ? number + rest : rest + number)) << i;
    }
  }
}

TEST(TextTables, MoveUpWhatFollowsARemovedText) {
  TextTable table;
  for (const char* text : {"a", "b", "c"})
    table.add(text);
  table.remove("b");
  table.remove("not here");
  EXPECT_EQ(table.find("a"), 0U);
  EXPECT_EQ(table.find("b"), std::nullopt);
  EXPECT_EQ(table.find("c"), 1U);
  EXPECT_FALSE(table.add("c"));
  EXPECT_TRUE(table.add("b"));
  EXPECT_EQ(table.find("b"), 2U);
}

TEST(TextTables, TakeAViewOfNothingForAnEmptyText) {
  TextTable table;
  table.add("a");
  EXPECT_EQ(table.find(std::string_view()), std::nullopt);
  table.add("");
  EXPECT_EQ(table.find(std::string_view()), 1U);
}

}  // namespace
}  // namespace sentrel
