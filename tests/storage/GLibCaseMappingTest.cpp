#include "device/storage/GLibCaseMapping.h"

#include <gtest/gtest.h>

namespace sentrel::storage {
namespace {

using namespace std::string_literals;

TEST(GLibCaseMapping, MapsWholeTextsAsUnicodeDoes) {
  struct Case {
    std::string text, lower, upper;
  };
  const Case cases[] = {
      {"", "", ""},
      {"com.Apps.Ij", "com.apps.ij", "COM.APPS.IJ"},
      {"Éa", "éa", "ÉA"},
      {"straße", "straße", "STRASSE"},
      {"ΟΔΟΣ", "οδος", "ΟΔΟΣ"},
      {"İı", "i\u0307ı", "İI"},
      {"ÌĮ", "ìį", "ÌĮ"},
      {"Жук 🔒 ﬁ", "жук 🔒 ﬁ", "ЖУК 🔒 FI"},
      {"A\0b"s, "a\0b"s, "A\0B"s},
      {"\0A"s, "\0a"s, "\0A"s},
  };
  const GLibCaseMapping mapping;
  for (const Case& one : cases) {
    EXPECT_EQ(mapping.lowercased(one.text), one.lower);
    EXPECT_EQ(mapping.uppercased(one.text), one.upper);
  }
}

TEST(GLibCaseMapping, LeavesWhatIsNotUtf8) {
  const GLibCaseMapping mapping;
  for (const std::string text : {"A\xFF", "A\xC3", "\xED\xA0\x80Z", "\xF5\x80\x80\x80"}) {
    EXPECT_EQ(mapping.lowercased(text), text);
    EXPECT_EQ(mapping.uppercased(text), text);
  }
}

}  // namespace
}  // namespace sentrel::storage
