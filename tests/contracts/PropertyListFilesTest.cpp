#include "sentrel/platform/PropertyListFiles.h"

#include <gtest/gtest.h>

#include <cmath>

#include "device/simulated/SimulatedFiles.h"
#include "device/storage/PlistFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

class Simulated {
 public:
  PropertyListFiles& files() { return files_; }

 private:
  simulated::SimulatedFiles files_;
};

class Real {
 public:
  PropertyListFiles& files() { return files_; }

 private:
  TemporaryFolder folder_;
  storage::PlistFiles files_{storage::DeviceRoot(folder_.path())};
};

template <class Implementation>
class PropertyListFilesOfADevice : public ::testing::Test {
 protected:
  Implementation device_;
  PropertyListFiles& files_ = device_.files();
};

using Implementations = ::testing::Types<Simulated, Real>;
TYPED_TEST_SUITE(PropertyListFilesOfADevice, Implementations);

/// A value with that many containers inside one another.
PropertyList nested(int depth) {
  PropertyList value = Array{};
  for (int i = 1; i < depth; ++i)
    value = Array{std::move(value)};
  return value;
}

TYPED_TEST(PropertyListFilesOfADevice, ReadBackWhatWasWrittenLast) {
  const std::string path = "/settings";
  using enum DictionaryReading::Outcome;
  EXPECT_EQ(this->files_.readDictionary(path), absent);
  const Dictionary versions[] = {
      {},
      {{"yes", true}, {"one", 1}, {"real", 1.0}, {"text", "Gr\xC3\xBC\xC3\x9F\x65 <&>\n"}},
      {{"", Array{Dictionary{}, PropertyList::Data{0, 255}, WallTime(Seconds(1e9))}}},
      {{"deep", nested(255)}},
      {{"beyond", std::uint64_t{1} << 63}},
      // What XML has no form or no room for.
      {{"control character", Array{"\x1B"}}, {"CF$UID", 1}, {"wide", "\xF0\x9F\x94\x92"}},
      {{"no character", "\xEF\xBF\xBF"}},
      {{"late date", WallTime(Seconds(1e12))}},
      {{"escapes", std::string(2'400'000, '&')}},
      {{"base 64", PropertyList::Data(7'200'000)}},
      {{"XML again", true}},
  };
  for (const Dictionary& version : versions) {
    EXPECT_TRUE(this->files_.writeDictionary(path, version));
    EXPECT_EQ(this->files_.readDictionary(path), version);
  }
  EXPECT_EQ(this->files_.readDictionary("/other"), absent);
}

TYPED_TEST(PropertyListFilesOfADevice, RefuseWhatCouldNotBeReadBackAndKeepTheOldFile) {
  const Dictionary old{{"a", 1}};
  ASSERT_TRUE(this->files_.writeDictionary("/settings", old));
  const Dictionary unreadable[] = {
      {{"not UTF-8", "\xFF"}},
      {{"\xC3", "a key that is not UTF-8"}},
      {{"zero", std::string("a\0b", 3)}},
      {{"too deep", nested(256)}},
      {{"too large", std::string(9 << 20, 'a')}},
      {{"too deep and wide", Array{"\x1B", nested(256)}}},
      {{"too wide", std::string(5'000'000, '&') + "\x1B\xC3\xA9"}},
      {{"no date", WallTime(Seconds(std::nan("")))}},
  };
  for (const Dictionary& dictionary : unreadable)
    EXPECT_FALSE(this->files_.writeDictionary("/settings", dictionary))
        << dictionary.begin()->first;
  EXPECT_EQ(this->files_.readDictionary("/settings"), old);
}

TYPED_TEST(PropertyListFilesOfADevice, KeepWholeSecondsOfADate) {
  ASSERT_TRUE(this->files_.writeDictionary("/file", {{"date", WallTime(Seconds(-0.25))}}));
  EXPECT_EQ(this->files_.readDictionary("/file"), (Dictionary{{"date", WallTime(Seconds(-1))}}));
}

TYPED_TEST(PropertyListFilesOfADevice, StandUnderAbsolutePathsAlone) {
  for (const std::string path : {"", "settings", "../settings", "/../settings", "/a/../settings"}) {
    EXPECT_FALSE(this->files_.writeDictionary(path, {})) << path;
    EXPECT_EQ(this->files_.readDictionary(path).dictionary, std::nullopt) << path;
  }
}

}  // namespace
}  // namespace sentrel
