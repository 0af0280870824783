#include "device/storage/BinaryWriter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <variant>

#include "device/storage/BinaryFormat.h"
#include "device/storage/PropertyListLimits.h"
#include "sentrel/platform/Utf8.h"

namespace sentrel::storage {

using namespace binary_format;

namespace {

/// Of offsets and of references; enough for the largest file.
constexpr unsigned numberSize = 4;

/// The least power of two of bytes that holds a number. Numbers of fewer than eight have no sign.
unsigned powerFor(std::uint64_t number) {
  if (number <= 0xFF) return 0;
  if (number <= 0xFFFF) return 1;
  return number <= 0xFFFFFFFF ? 2 : 3;
}

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// None where it is not UTF-8.
std::optional<std::u16string> utf16Of(std::string_view text) {
  std::u16string units;
  while (!text.empty()) {
    const Utf8Character next = firstUtf8Character(text);
    if (next.length == 0) return std::nullopt;
    text.remove_prefix(next.length);
    if (next.value < 0x10000) {
      units += static_cast<char16_t>(next.value);
      continue;
    }
    units += static_cast<char16_t>(0xD7C0 + (next.value >> 10));
    units += static_cast<char16_t>(0xDC00 + (next.value & 0x3FF));
  }
  return units;
}

/// Of a dictionary that stands for an identifier.
std::optional<std::uint64_t> identifierOf(const PropertyList::Dictionary& entries) {
  if (entries.size() != 1 || entries.begin()->first != identifierKey) return std::nullopt;
  const PropertyList& number = entries.begin()->second;
  if (const auto* large = number.as<std::uint64_t>()) return *large;
  const auto* small = number.as<std::int64_t>();
  if (!small || *small < 0) return std::nullopt;
  return static_cast<std::uint64_t>(*small);
}

}  // namespace

void BinaryWriter::begin() {
  out_ = head;
}

bool BinaryWriter::end() {
  const std::size_t table = out_.size();
  for (const std::uint64_t offset : offsets_)
    addNumber(offset, numberSize);
  addNumber(0, 6);
  addNumber(numberSize, 1);
  addNumber(numberSize, 1);
  addNumber(offsets_.size(), 8);
  addNumber(0, 8);  // the root
  addNumber(table, 8);
  return out_.size() <= maximumPropertyListSize;
}

bool BinaryWriter::add(const PropertyList& value) {
  if (out_.size() > maximumPropertyListSize) return false;
  return value.visit([this](const auto& content) { return add(content); });
}

bool BinaryWriter::add(bool flag) {
  beginObject();
  addNumber(flag ? 0x09 : 0x08, 1);
  return true;
}

bool BinaryWriter::add(std::int64_t number) {
  beginObject();
  const auto bits = static_cast<std::uint64_t>(number);
  const unsigned power = powerFor(bits);
  addMarker(integer, power);
  addNumber(bits, 1U << power);
  return true;
}

/// In sixteen bytes: in eight it would have a sign.
bool BinaryWriter::add(std::uint64_t number) {
  beginObject();
  addMarker(integer, 4);
  addNumber(0, 8);
  addNumber(number, 8);
  return true;
}

bool BinaryWriter::add(double number) {
  beginObject();
  addMarker(real, 3);
  addNumber(std::bit_cast<std::uint64_t>(number), 8);
  return true;
}

bool BinaryWriter::add(PropertyList::Date moment) {
  const double since2001 = (moment.time_since_epoch() - startOf2001).count();
  beginObject();
  addMarker(date, 3);
  addNumber(std::bit_cast<std::uint64_t>(since2001), 8);
  return std::isfinite(since2001);
}

bool BinaryWriter::add(const PropertyList::Data& bytes) {
  beginObject();
  addMarker(data, bytes.size());
  out_.append(bytes.begin(), bytes.end());
  return bytes.size() <= maximumPropertyListSize;
}

bool BinaryWriter::add(const std::string& text) {
  if (text.size() > maximumPropertyListSize || text.find('\0') != text.npos) return false;
  beginObject();
  if (isAscii(text)) {
    addMarker(ascii, text.size());
    out_ += text;
    return true;
  }
  const auto units = utf16Of(text);
  if (!units) return false;
  addMarker(utf16, units->size());
  for (const char16_t unit : *units)
    addNumber(unit, 2);
  return true;
}

bool BinaryWriter::add(const PropertyList::Array& elements) {
  beginObject();
  if (++depth_ > maximumPropertyListDepth) return false;
  addMarker(array, elements.size());
  std::size_t reference = addReferences(elements.size());
  for (const PropertyList& element : elements)
    if (!addReferenced(reference, element)) return false;
  --depth_;
  return true;
}

bool BinaryWriter::add(const PropertyList::Dictionary& entries) {
  if (const auto number = identifierOf(entries)) return addIdentifier(*number);
  beginObject();
  if (++depth_ > maximumPropertyListDepth) return false;
  addMarker(dictionary, entries.size());
  std::size_t key = addReferences(entries.size());
  std::size_t reference = addReferences(entries.size());
  for (const auto& [name, value] : entries)
    if (!addReferenced(key, name) || !addReferenced(reference, value)) return false;
  --depth_;
  return true;
}

bool BinaryWriter::addIdentifier(std::uint64_t number) {
  beginObject();
  const unsigned bytes = 1U << powerFor(number);
  addMarker(identifier, bytes - 1);
  addNumber(number, bytes);
  return true;
}

void BinaryWriter::addMarker(unsigned type, std::size_t count) {
  addNumber(type << 4 | std::min<std::size_t>(count, 0xF), 1);
  if (count < 0xF) return;
  addNumber(integer << 4 | 3, 1);
  addNumber(count, 8);
}

void BinaryWriter::addNumber(std::uint64_t number, unsigned bytes) {
  while (bytes-- > 0)
    out_ += static_cast<char>(number >> (8 * bytes));
}

/// Room for them; answers where it begins.
std::size_t BinaryWriter::addReferences(std::size_t count) {
  out_.append(count * numberSize, '\0');
  return out_.size() - count * numberSize;
}

/// Adds an object, has the reference that stands at `reference` name it, and moves on to the next.
template <class Content>
bool BinaryWriter::addReferenced(std::size_t& reference, const Content& content) {
  const std::size_t number = offsets_.size();
  for (unsigned left = numberSize; left-- > 0;)
    out_[reference++] = static_cast<char>(number >> (8 * left));
  return add(content);
}

}  // namespace sentrel::storage
