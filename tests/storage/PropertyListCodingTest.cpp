#include "device/storage/PropertyListCoding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/storage/BinaryListBuilder.h"
#include "tests/support/LibplistReading.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;
using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

PropertyList::Date date(double secondsSince1970) {
  return PropertyList::Date(Seconds(secondsSince1970));
}

std::string xml(const std::string& value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + value + "</plist>";
}

std::string repeated(std::size_t times, const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i)
    result += text;
  return result;
}

/// What parsePropertyList() makes of `bytes`, as text for comparing.
std::string outcome(const std::string& bytes) {
  const auto reading = parsePropertyList(bytes);
  if (const auto* fault = std::get_if<PropertyListFault>(&reading)) return describe(*fault);
  return "reads as " + sentrel::describe(std::get<PropertyList>(reading));
}

void expectFault(const std::string& bytes, Kind kind) {
  const auto reading = parsePropertyList(bytes);
  const auto* fault = std::get_if<PropertyListFault>(&reading);
  ASSERT_TRUE(fault) << outcome(bytes).substr(0, 200);
  EXPECT_EQ(fault->kind, kind) << describe(*fault);
}

void expectValue(const std::string& bytes, const PropertyList& value) {
  const auto reading = parsePropertyList(bytes);
  const auto* read = std::get_if<PropertyList>(&reading);
  ASSERT_TRUE(read) << outcome(bytes);
  EXPECT_EQ(*read, value) << outcome(bytes);
}

PropertyList everyType() {
  return Dictionary{
      {"yes", true},
      {"no", false},
      {"integers", Array{0, 1, -1, 255, 65536, largest, smallest, std::uint64_t{1} << 63, ~0ul}},
      {"reals", Array{0.0, 60.0, 0.1, -1e-300, 1.7976931348623157e308,
                      std::numeric_limits<double>::infinity()}},
      {"texts", Array{"", " a\tb\n ", "<&>\"']]>", "\r\n", "Grüße 🔒", std::string(300, 'x')}},
      {"", "the empty key"},
      {"a<b&c", "a key with marks"},
      {"data", Array{PropertyList::Data{}, PropertyList::Data{0, 255, 1}}},
      {"dates", Array{date(0), date(-86400.0 * 365 * 1000), date(64092211200.0), date(1e9 + 1)}},
      {"nested", Array{Dictionary{}, Array{}, Dictionary{{"in", Array{Array{true}}}}}}};
}

TEST(PropertyListCoding, KeepsEveryTypeApartAndAgreesWithLibplistOnXmlAndBinary) {
  const auto document = serializePropertyList(everyType());
  ASSERT_TRUE(document);
  expectValue(*document, everyType());
  expectValue(binaryByLibplist(*document), everyType());
}

/// The control character leaves XML out.
TEST(PropertyListCoding, WritesWhatXmlCannotCarryAsABinaryListThatLibplistReadsLikewise) {
  const PropertyList value = Array{"\a", everyType(), Dictionary{{"CF$UID", 7}}};
  const auto file = serializePropertyList(value);
  ASSERT_TRUE(file && file->starts_with("bplist00"));
  expectValue(*file, value);
  expectValue(binaryByLibplist(*file), value);
}

TEST(PropertyListCoding, ReadsNotANumber) {
  const auto document = serializePropertyList(std::nan(""));
  ASSERT_TRUE(document);
  const auto reading = parsePropertyList(*document);
  const auto* value = std::get_if<PropertyList>(&reading);
  ASSERT_TRUE(value && value->as<double>());
  EXPECT_TRUE(std::isnan(*value->as<double>()));
}

TEST(PropertyListCoding, ReadsXmlAsOthersWriteIt) {
  const std::pair<std::string, PropertyList> cases[] = {
      {"<true/>", true},
      {"<dict/>", Dictionary{}},
      {"\xEF\xBB\xBF<plist><true/></plist>", true},
      {xml("<integer>18446744073709551615</integer>"), ~0ul},
      {"<!-- it's --><plist><array><!-- > --><true></true></array><!-- - --></plist>\n",
       Array{true}},
      {"<?xml version='1.0'?><!DOCTYPE plist SYSTEM \"a\"><plist version='1'><false/></plist>",
       false},
      {xml("<integer> +7\n</integer>"), 7},
      {xml("<integer>0x1f</integer>"), 31},
      {xml("<real> -1.5e3 </real>"), -1500.0},
      {xml("<string>&lt;&#65;&#x1F512;&apos;<![CDATA[<&amp;>]]>b<!-- c -->d</string>"),
       "<A🔒'<&amp;>bd"},
      {xml("<string />"), ""},
      {xml("<data>\n\tQU JD\n\tRA==\n</data>"), PropertyList::Data{'A', 'B', 'C', 'D'}},
      {xml("<date>2001-01-01T00:00:01Z</date>"), date(978307201)},
      {xml("<dict><key>a</key><true/><key>a</key><false/></dict>"), Dictionary{{"a", false}}}};
  for (const auto& [document, value] : cases) {
    SCOPED_TRACE(document);
    expectValue(document, value);
  }
}

TEST(PropertyListCoding, RefusesXmlThatItWouldHaveToGuessAt) {
  const std::pair<std::string, std::vector<std::string>> contents[] = {
      {"integer",
       {"abc", "", "12 3", "18446744073709551616", "-9223372036854775809", "99999999999999999999",
        "010", "0x-1", "+-1"}},
      {"real", {"1,5", "1e999", ""}},
      {"date",
       {"yesterday", "2023-02-29T00:00:00Z", "2023-01-01T24:00:00Z", "2023-01-01T00:00:0-Z"}},
      {"data", {"Q", "QUJD=", "QU*D"}},
      {"true", {"x"}},
      {"null", {""}},
      {"plist", {"<true/>"}},
      {"string", {"a&b", "&unknown;", "&amp", "&#0;", "&#xD800;", "&#x110000;", "a\x01", "a<b/>"}},
      {"dict", {"<key>a</key>", "<key>a</key><key>b</key>", "<true/>", "<key/><true/>"}},
      {"array", {"<key>a</key>", "text"}}};
  std::vector<std::string> values = {"",
                                     "<integer/>",
                                     "<real/>",
                                     "<null/>",
                                     "<string>a</array>",
                                     "<array><true/></dict>",
                                     "<array><true/>",
                                     "<true/><true/>"};
  for (const auto& [element, texts] : contents)
    for (const std::string& text : texts)
      values.push_back("<" + element + ">" + text + "</" + element + ">");
  for (const std::string& value : values) {
    SCOPED_TRACE(value);
    expectFault(xml(value), Kind::damaged);
  }
}

TEST(PropertyListCoding, RefusesWhatIsNoPropertyList) {
  const std::pair<Kind, std::vector<std::string>> cases[] = {
      {Kind::empty, {""}},
      {Kind::damaged,
       {" \n", "{ old = style; }", "\xEF\xBB\xBF",
        "\xEF\xBB\xBF"
        "bplist00",
        xml("<true/>") + "junk", xml("<true/>") + xml("<true/>"), "<plist/>", "<plist",
        "<plist(><true/></plist>", "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><true/></plist>",
        "<html></html>", "<!--><plist><true/></plist>", "<plist version='>'><true/></plist>",
        "<?xml a='?>'?><plist><true/></plist>", "<?>?><dict/>", "<plist /><dict/></plist>"}},
      {Kind::notUtf8,
       {xml("<dict><key>\xE2\x82</key><true/></dict>"), std::string("\xFF\xFE<\0p\0", 6)}},
      {Kind::tooLarge, {std::string((std::size_t{8} << 20) + 1, ' ')}}};
  for (const auto& [kind, documents] : cases)
    for (const std::string& document : documents) {
      SCOPED_TRACE(document.substr(0, 60));
      expectFault(document, kind);
    }
  for (const char* text :
       {"\xFF", "\xC0\xAF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
    expectFault(xml("<string>" + std::string(text) + "</string>"), Kind::notUtf8);
}

TEST(PropertyListCoding, NamesTheLineOfAFault) {
  EXPECT_EQ(outcome("<plist>\n<dict>\n<key>a</key>\n<integer>x</integer>\n</dict></plist>"),
            "it is damaged: no integer of 64 bits (line 4)");
  EXPECT_EQ(outcome("<plist><dict>\n<key>a</key>\n</dict></plist>"),
            "it is damaged: a key without a value (line 3)");
}

TEST(PropertyListCoding, BoundsTheDepthOfXml) {
  const auto nested = [](std::size_t depth) {
    return xml(repeated(depth - 1, "<array>") + "<dict/>" + repeated(depth - 1, "</array>"));
  };
  EXPECT_TRUE(std::holds_alternative<PropertyList>(parsePropertyList(nested(256))));
  expectFault(nested(257), Kind::tooDeep);
  expectFault(repeated(100'000, "<array>"), Kind::tooDeep);
  expectFault(repeated(800'000, "<dict><key/>"), Kind::tooLarge);
  expectFault(repeated(80'000, "<dict><key>"), Kind::damaged);
}

TEST(PropertyListCoding, ReadsAMegabyteOfEscapesInLinearTime) {
  const std::string text(200'000, '<');
  const auto document = serializePropertyList(text);
  ASSERT_TRUE(document);
  expectValue(*document, text);
}

TEST(PropertyListCoding, ReadsNothingOutOfATruncatedFile) {
  const std::string document = *serializePropertyList(everyType());
  const std::string whole = document.substr(0, document.rfind('>') + 1);
  for (const std::string& sample : {whole, binaryByLibplist(document)})
    for (std::size_t length = 0; length < sample.size(); ++length) {
      const auto reading = parsePropertyList(sample.substr(0, length));
      ASSERT_TRUE(std::holds_alternative<PropertyListFault>(reading)) << length;
    }
}

TEST(PropertyListCoding, SurvivesEveryChangedByteOfABinaryFile) {
  const std::string sample = binaryByLibplist(*serializePropertyList(everyType()));
  for (std::size_t i = 0; i < sample.size(); ++i)
    for (const int change : {0x01, 0x10, 0x80, 0xFF}) {
      std::string changed = sample;
      changed[i] = static_cast<char>(changed[i] ^ change);
      const auto reading = parsePropertyList(changed);
      const auto* value = std::get_if<PropertyList>(&reading);
      if (!value) continue;
      ASSERT_TRUE(libplistReads(changed, *value)) << i << ": " << change;
      // Where XML has a form for it, it can be written and read again.
      const auto document = serializePropertyList(*value);
      if (!document) continue;
      const auto again = parsePropertyList(*document);
      ASSERT_EQ(serializePropertyList(std::get<PropertyList>(again)), document);
    }
}

TEST(BinaryPropertyList, SharesLeavesButNoCollectionsAndRefusesCircles) {
  BinaryListBuilder list;
  const auto flag = list.add("\x09");
  const auto inner = list.addArray({flag, flag});
  expectValue(list.finish(inner), Array{true, true});
  expectFault(list.finish(list.addArray({inner, inner})), Kind::damaged);
  BinaryListBuilder circle;
  circle.addArray({1});
  circle.addArray({0});
  expectFault(circle.finish(0), Kind::damaged);
  expectFault(circle.finish(circle.addArray({2})), Kind::damaged);
  BinaryListBuilder unbounded(1);
  auto last = unbounded.addArray({unbounded.add("\x09")});
  for (int level = 0; level < 20; ++level)
    last = unbounded.addArray({last, last, last, last});
  ASSERT_LT(unbounded.finish(last).size(), 300u);
  expectFault(unbounded.finish(last), Kind::damaged);
}

TEST(BinaryPropertyList, BoundsWhatSharedLeavesUnfoldTo) {
  BinaryListBuilder texts;
  const auto text = texts.add('\x5F' + std::string("\x11\x40\x00", 3) + std::string(0x4000, 'a'));
  expectValue(texts.finish(texts.addArray({text, text})),
              Array{std::string(0x4000, 'a'), std::string(0x4000, 'a')});
  expectFault(texts.finish(texts.addArray(std::vector<std::uint32_t>(1'000, text))),
              Kind::tooLarge);
  BinaryListBuilder flags;
  const auto flag = flags.add("\x09");
  expectFault(flags.finish(flags.addArray(std::vector<std::uint32_t>(1'300'000, flag))),
              Kind::tooLarge);
  BinaryListBuilder identifiers;
  const auto identifier = identifiers.add("\x80\x01");
  expectValue(identifiers.finish(identifier), Dictionary{{"CF$UID", 1}});
  expectFault(
      identifiers.finish(identifiers.addArray(std::vector<std::uint32_t>(130'000, identifier))),
      Kind::tooLarge);
}

TEST(BinaryPropertyList, BoundsItsDepth) {
  BinaryListBuilder list(4);
  auto last = list.addArray({});
  for (int depth = 1; depth < 256; ++depth)
    last = list.addArray({last});
  EXPECT_TRUE(std::holds_alternative<PropertyList>(parsePropertyList(list.finish(last))));
  expectFault(list.finish(list.addArray({last})), Kind::tooDeep);
  for (int depth = 256; depth < 100'000; ++depth)
    last = list.addArray({last});
  expectFault(list.finish(last), Kind::tooDeep);
}

TEST(BinaryPropertyList, RefusesObjectsThatItCannotTakeAsTheyAre) {
  const std::pair<std::string, Kind> objects[] = {
      {std::string("\x00", 1), Kind::unsupportedType},          // null
      {"\x0F", Kind::unsupportedType},                          // filler
      {std::string("\x88").append(9, '\1'), Kind::damaged},     // an identifier of nine bytes
      {"\xC1\x01", Kind::unsupportedType},                      // a set
      {std::string("\x14").append(16, '\x01'), Kind::damaged},  // an integer of 128 bits
      {"\x21\x01\x01", Kind::damaged},                          // a real of 2 bytes
      {std::string("\x33\x7F\xF0").append(6, '\0'), Kind::unsupportedType},  // an infinite date
      {"\x51\xFF", Kind::notUtf8},                                           // text of one byte
      {std::string("\x51\x00", 2), Kind::damaged},                           // text with a zero
      {"\x60", Kind::damaged},                                               // empty wide text
      {std::string("\x61\xD8\x00", 3), Kind::notUtf8},                       // half a pair
      {std::string("\x62\xDC\x00\x00\x41", 5), Kind::notUtf8},               // the other half
      {"\x4E", Kind::damaged},                                      // data into the offsets
      {"\x5E", Kind::damaged},                                      // text over the end
      {"\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF", Kind::damaged},  // data over the end
      {"\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", Kind::damaged},  // array over the end
      {std::string("\xA1\x00\x09", 3), Kind::damaged},              // reference to nothing
      {std::string("\xD1\x00\x01\x00\x01", 5), Kind::damaged},      // a key that is no text
      {"\x5F\x51", Kind::damaged},                                  // count that is no number
  };
  for (const auto& [bytes, kind] : objects) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    BinaryListBuilder list;
    const auto object = list.add(bytes);
    list.add("\x09");
    expectFault(list.finish(object), kind);
  }
}

TEST(BinaryPropertyList, RefusesATrailerThatMakesNoSense) {
  BinaryListBuilder list;
  const std::string good = list.finish(list.add("\x09"));
  expectValue(good, true);
  const std::size_t trailer = good.size() - 32;
  const std::pair<std::size_t, char> changes[] = {{0, 'x'},
                                                  {6, '1'},
                                                  {trailer + 6, '\0'},
                                                  {trailer + 6, '\x09'},
                                                  {7, '1'},
                                                  {trailer + 7, '\0'},
                                                  {trailer + 15, '\x02'},
                                                  {trailer + 8, '\x7F'},
                                                  {trailer + 23, '\x01'},
                                                  {trailer + 31, '\x08'},
                                                  {trailer + 24, '\x7F'}};
  for (const auto& [position, byte] : changes) {
    SCOPED_TRACE(position);
    std::string changed = good;
    changed[position] = byte;
    expectFault(changed, Kind::damaged);
  }
}

}  // namespace
}  // namespace sentrel::storage
