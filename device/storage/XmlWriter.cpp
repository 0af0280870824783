#include "device/storage/XmlWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <variant>

#include "device/storage/Base64.h"
#include "device/storage/PropertyListLimits.h"
#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

constexpr std::string_view head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<plist version=\"1.0\">\n";

/// Room for a heavy user's settings, so that the text need not move as it grows.
constexpr std::size_t usualSize = 160 << 10;

/// Empty where `c` stands for itself. A carriage return would come back as a line feed from a
/// reader that keeps to XML.
constexpr std::string_view escapeFor(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':
      return "&#13;";
    default:
      return {};
  }
}

constexpr auto special = [] {
  std::array<bool, 256> table{};
  for (std::size_t c = 0; c < table.size(); ++c)
    table[c] = !escapeFor(static_cast<char>(c)).empty();
  return table;
}();

/// How much of `text` stands for itself.
std::size_t plainLength(std::string_view text) {
  const auto end = std::find_if(text.begin(), text.end(),
                                [](char c) { return special[static_cast<unsigned char>(c)]; });
  return static_cast<std::size_t>(end - text.begin());
}

template <class Number>
std::string_view format(Number number, char (&room)[32]) {
  const auto end = std::to_chars(room, room + sizeof room, number).ptr;
  return {room, static_cast<std::size_t>(end - room)};
}

}  // namespace

void XmlWriter::begin() {
  out_.reserve(usualSize);
  out_ = head;
}

bool XmlWriter::end() {
  out_ += "</plist>\n";
  // Mark-up is ASCII, so the whole is clean only if every text in it is.
  return out_.size() <= maximumPropertyListSize && qualityOf(out_) == TextQuality::clean;
}

bool XmlWriter::add(const PropertyList& value) {
  if (out_.size() > maximumPropertyListSize) return false;
  return value.visit([this](const auto& content) { return add(content); });
}

bool XmlWriter::add(bool flag) {
  indent();
  out_ += flag ? "<true/>\n" : "<false/>\n";
  return true;
}

bool XmlWriter::add(std::int64_t number) {
  char room[32];
  return addElement("<integer>", format(number, room), "</integer>\n");
}

bool XmlWriter::add(std::uint64_t number) {
  char room[32];
  return addElement("<integer>", format(number, room), "</integer>\n");
}

bool XmlWriter::add(double number) {
  char room[32];
  if (std::isnan(number)) return addElement("<real>", "nan", "</real>\n");
  if (std::isinf(number))
    return addElement("<real>", number > 0 ? "+infinity" : "-infinity", "</real>\n");
  return addElement("<real>", format(number, room), "</real>\n");
}

bool XmlWriter::add(const std::string& text) {
  return addText("<string>", text, "</string>\n");
}

bool XmlWriter::add(const PropertyList::Data& data) {
  if (data.size() > maximumPropertyListSize) return false;
  return addElement("<data>", encodeBase64(data), "</data>\n");
}

bool XmlWriter::add(PropertyList::Date date) {
  using namespace std::chrono;
  constexpr Seconds startOfYear1{-62135596800.0};
  constexpr Seconds startOfYear10000{253402300800.0};
  const Seconds since1970 = date.time_since_epoch();
  // Written so that a date that is no number fails too.
  if (!(since1970 >= startOfYear1 && since1970 < startOfYear10000)) return false;
  const auto second = floor<seconds>(sys_time<Seconds>(since1970));
  const auto day = floor<days>(second);
  const year_month_day calendar(day);
  const hh_mm_ss clock(second - day);
  char room[32];
  std::snprintf(room, sizeof room, "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
                static_cast<unsigned>(calendar.day()), static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return addElement("<date>", room, "</date>\n");
}

bool XmlWriter::add(const PropertyList::Array& elements) {
  indent();
  out_ += "<array>\n";
  if (++depth_ > maximumPropertyListDepth) return false;
  for (const PropertyList& element : elements)
    if (!add(element)) return false;
  --depth_;
  indent();
  out_ += "</array>\n";
  return true;
}

bool XmlWriter::add(const PropertyList::Dictionary& entries) {
  indent();
  out_ += "<dict>\n";
  if (++depth_ > maximumPropertyListDepth) return false;
  for (const auto& [key, value] : entries)
    if (!addText("<key>", key, "</key>\n") || !add(value)) return false;
  --depth_;
  indent();
  out_ += "</dict>\n";
  return true;
}

bool XmlWriter::addText(std::string_view start, std::string_view text, std::string_view end) {
  if (text.size() > maximumPropertyListSize) return false;
  indent();
  out_ += start;
  addEscaped(text);
  out_ += end;
  return true;
}

bool XmlWriter::addElement(std::string_view start, std::string_view text, std::string_view end) {
  indent();
  out_.append(start).append(text).append(end);
  return true;
}

void XmlWriter::addEscaped(std::string_view text) {
  for (;;) {
    const std::size_t plain = plainLength(text);
    out_ += text.substr(0, plain);
    if (plain == text.size()) return;
    out_ += escapeFor(text[plain]);
    text.remove_prefix(plain + 1);
  }
}

void XmlWriter::indent() {
  out_.append(depth_, '\t');
}

}  // namespace sentrel::storage
