#include "sentrel/platform/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>

namespace sentrel {
namespace {

struct Reading {
  PropertyList value;
  bool asBool;
  std::int64_t asInteger;
  double asReal;
};

TEST(PropertyList, ReadsNumbersAndTextsLeniently) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr auto largest = std::numeric_limits<std::int64_t>::max();
  constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
  const std::string zeros(400, '0');
  const Reading readings[] = {
      {true, true, 1, 1},
      {2, true, 2, 2},
      {std::uint64_t{1} << 63, true, largest, 0x1p63},
      {-0.5, true, 0, -0.5},
      {1e300, true, largest, 1e300},
      {"YES", true, 0, 0},
      {" +0true", true, 0, 0},
      {"n", false, 0, 0},
      {"12abc", true, 12, 12},
      {"-7.5", true, -7, -7.5},
      {"+-3", false, 0, 0},
      {"99999999999999999999", true, largest, 1e20},
      {"-99999999999999999999", true, smallest, -1e20},
      {"1e999", true, 1, infinity},
      {"1e-999", true, 1, 0},
      {"1e999 e-", true, 1, infinity},
      {"-12.5E+999x", true, -12, -infinity},
      {"0." + zeros + "1", false, 0, 0},
      {"-0." + zeros + "1e9", false, 0, 0},
      {"0." + zeros + "1e999", false, 0, infinity},
      {"1" + zeros, true, largest, infinity},
      {"1" + zeros + "e-999", true, largest, 0},
      {"1e99999999999999999999", true, 1, infinity},
      {"1e-99999999999999999999", true, 1, 0},
      {"nan", false, 0, 0},
      {"inf", false, 0, 0},
      {"-Infinity", false, 0, 0},
      {"", false, 0, 0},
      {PropertyList::Array{1}, false, 0, 0},
      {PropertyList::Data{1}, false, 0, 0},
  };
  for (const Reading& reading : readings) {
    SCOPED_TRACE(describe(reading.value));
    EXPECT_EQ(reading.value.boolValue(), reading.asBool);
    EXPECT_EQ(reading.value.integerValue(), reading.asInteger);
    EXPECT_EQ(reading.value.doubleValue(), reading.asReal);
  }
}

TEST(PropertyList, ReadsNumbersBeyondAFloatAsTheLargest) {
  constexpr float largest = std::numeric_limits<float>::max();
  EXPECT_EQ(PropertyList(2.5).floatValue(), 2.5F);
  for (const PropertyList& value :
       {PropertyList(1e300), PropertyList("1e39"), PropertyList("1e999")})
    EXPECT_EQ(value.floatValue(), largest) << describe(value);
  EXPECT_EQ(PropertyList(-1e300).floatValue(), -largest);
}

TEST(PropertyList, KeepsBooleanIntegerAndRealApart) {
  EXPECT_NE(PropertyList(true), PropertyList(1));
  EXPECT_NE(PropertyList(1), PropertyList(1.0));
  EXPECT_EQ(PropertyList(std::uint64_t{1}), PropertyList(1));
  EXPECT_EQ(describe(PropertyList::Array{true, 1, 1.5, "a", ~std::uint64_t{0}}),
            "(YES, 1, 1.5, \"a\", 18446744073709551615)");
}

}  // namespace
}  // namespace sentrel
