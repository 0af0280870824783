#include "device/storage/BinaryReader.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "device/storage/BinaryFormat.h"
#include "device/storage/PropertyListLimits.h"
#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;
using namespace binary_format;

// The least that things cost in XML: an element of a collection, "<true/>"; a key, "<key></key>";
// and what a collection that is not empty takes more than an empty one, "<dict></dict>".
constexpr std::uint64_t smallestElementSize = 7;
constexpr std::uint64_t smallestKeySize = 11;
constexpr std::uint64_t collectionSize = 6;

/// What an identifier costs in XML at least: its dictionary and key.
constexpr std::uint64_t smallestIdentifierSize = 60;

/// Goes down the objects from the root. A step that fails leaves a fault behind and says none.
class BinaryReader {
 public:
  explicit BinaryReader(std::string_view file) : file_(file) {}

  PropertyListReading read() {
    if (readTrailer()) {
      reached_.resize(objectCount_);
      if (auto root = readObject(root_, 1)) return std::move(*root);
    }
    return fault_;
  }

 private:
  using Value = std::optional<PropertyList>;
  using Text = std::optional<std::string>;

  /// Where an object's content stands, and its count of bytes, characters or elements.
  struct Content {
    std::uint64_t start;
    std::uint64_t count;
  };

  std::nullopt_t fail(std::string_view detail, Kind kind = Kind::damaged) {
    fault_ = {kind, detail};
    return std::nullopt;
  }

  std::uint64_t numberAt(std::uint64_t start, std::uint64_t bytes) const {
    std::uint64_t number = 0;
    for (std::uint64_t i = 0; i < bytes; ++i)
      number = number << 8 | static_cast<unsigned char>(file_[start + i]);
    return number;
  }

  bool readTrailer() {
    if (!file_.starts_with(head)) return refuse("an unknown version of the binary form");
    if (file_.size() < head.size() + trailerSize) return refuse("it ends too early");
    const std::uint64_t trailer = file_.size() - trailerSize;
    offsetSize_ = numberAt(trailer + 6, 1);
    referenceSize_ = numberAt(trailer + 7, 1);
    objectCount_ = numberAt(trailer + 8, 8);
    root_ = numberAt(trailer + 16, 8);
    tableStart_ = numberAt(trailer + 24, 8);
    const bool sizes =
        offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
    if (!sizes || tableStart_ <= head.size() || tableStart_ > trailer)
      return refuse("its trailer makes no sense");
    const bool fits = objectCount_ <= (trailer - tableStart_) / offsetSize_;
    return fits || refuse("it promises more objects than it holds");
  }

  /// Where the object of that number stands.
  std::optional<std::uint64_t> find(std::uint64_t number) {
    if (number >= objectCount_) return fail("a reference to no object");
    const std::uint64_t start = numberAt(tableStart_ + number * offsetSize_, offsetSize_);
    if (start < head.size() || start >= tableStart_) return fail("an object outside the file");
    return start;
  }

  unsigned markerAt(std::uint64_t start) const { return static_cast<unsigned char>(file_[start]); }

  Value readObject(std::uint64_t number, std::size_t depth) {
    const auto start = find(number);
    if (!start) return std::nullopt;
    const unsigned type = markerAt(*start) >> 4;
    switch (type) {
      case simple:
        return readSimple(markerAt(*start));
      case integer:
      case real:
      case date:
        return readNumber(type, *start);
      case identifier:
        return readIdentifier(*start);
      case data:
        return readData(*start);
      case ascii:
      case utf16:
        if (auto text = readText(*start)) return std::move(*text);
        return std::nullopt;
      case array:
      case dictionary:
        if (!enter(number, depth)) return std::nullopt;
        return type == array ? readArray(*start, depth) : readDictionary(*start, depth);
      default:
        return fail({}, Kind::unsupportedType);
    }
  }

  Value readSimple(unsigned marker) {
    if (marker != 0x08 && marker != 0x09) return fail({}, Kind::unsupportedType);
    return marker == 0x09;
  }

  /// The size of a number is a power of two.
  Value readNumber(unsigned type, std::uint64_t start) {
    const unsigned power = markerAt(start) & 0xF;
    if (type == integer && power > 3) return readWideInteger(start, power);
    if (type == real && power != 2 && power != 3) return fail("a real of unknown size");
    if (type == date && power != 3) return fail("a date of unknown size");
    const std::uint64_t size = std::uint64_t{1} << power;
    if (!lies(start + 1, size)) return std::nullopt;
    const std::uint64_t bits = numberAt(start + 1, size);
    if (type == integer) return static_cast<std::int64_t>(bits);
    if (type == real && power == 2)
      return double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))};
    const auto value = std::bit_cast<double>(bits);
    if (type == real) return value;
    if (!std::isfinite(value)) return fail({}, Kind::unsupportedType);
    return PropertyList::Date(startOf2001 + Seconds(value));
  }

  /// Sixteen bytes hold what does not fit eight with a sign.
  Value readWideInteger(std::uint64_t start, unsigned power) {
    if (power == 4 && !lies(start + 1, 16)) return std::nullopt;
    if (power != 4 || numberAt(start + 1, 8) != 0)
      return fail("an integer that does not fit 64 bits");
    return numberAt(start + 9, 8);
  }

  /// As XML has it.
  Value readIdentifier(std::uint64_t start) {
    const std::uint64_t size = (markerAt(start) & 0xF) + 1;
    if (size > 8) return fail("an identifier that does not fit 64 bits");
    if (!lies(start + 1, size) || !charge(smallestIdentifierSize)) return std::nullopt;
    return PropertyList::Dictionary{{std::string(identifierKey), numberAt(start + 1, size)}};
  }

  Value readData(std::uint64_t start) {
    const auto content = readContent(start, 1);
    if (!content) return std::nullopt;
    const std::string_view bytes = file_.substr(content->start, content->count);
    return PropertyList::Data(bytes.begin(), bytes.end());
  }

  Text readText(std::uint64_t start) {
    const bool isWide = markerAt(start) >> 4 == utf16;
    const auto content = readContent(start, isWide ? 2 : 1);
    if (!content) return std::nullopt;
    return isWide ? readUtf16(*content) : readBytes(*content);
  }

  Text readBytes(const Content& content) {
    const std::string_view text = file_.substr(content.start, content.count);
    if (qualityOf(text) == TextQuality::notUtf8) return fail({}, Kind::notUtf8);
    if (text.find('\0') != text.npos) return fail("a zero inside a text");
    return std::string(text);
  }

  Text readUtf16(const Content& content) {
    if (content.count == 0) return fail("an empty text of wide characters");  // as libplist has it
    std::string text;
    char32_t high = 0;
    for (std::uint64_t i = 0; i < content.count; ++i) {
      const auto unit = static_cast<char32_t>(numberAt(content.start + 2 * i, 2));
      if (unit == 0) return fail("a zero inside a text");
      const bool isLow = unit >= 0xDC00 && unit <= 0xDFFF;
      if (isLow != (high != 0)) return fail("half a character", Kind::notUtf8);
      if (isLow)
        appendUtf8(text, 0x10000 + ((std::exchange(high, 0) - 0xD800) << 10) + (unit - 0xDC00));
      else if (unit >= 0xD800 && unit <= 0xDBFF)
        high = unit;
      else
        appendUtf8(text, unit);
    }
    if (high != 0) return fail("half a character", Kind::notUtf8);
    return text;
  }

  /// A container is entered once.
  bool enter(std::uint64_t number, std::size_t depth) {
    if (reached_[number]) return refuse("a collection that is used twice");
    reached_[number] = true;
    return depth <= maximumPropertyListDepth || refuse({}, Kind::tooDeep);
  }

  Value readArray(std::uint64_t start, std::size_t depth) {
    const auto content = readContainer(start, /*references=*/1, smallestElementSize);
    if (!content) return std::nullopt;
    PropertyList::Array elements;
    elements.reserve(content->count);
    for (std::uint64_t i = 0; i < content->count; ++i) {
      auto element = readObject(referenceAt(*content, i), depth + 1);
      if (!element) return std::nullopt;
      elements.push_back(std::move(*element));
    }
    return elements;
  }

  /// The references to all keys come before those to the values.
  Value readDictionary(std::uint64_t start, std::size_t depth) {
    const auto content =
        readContainer(start, /*references=*/2, smallestKeySize + smallestElementSize);
    if (!content) return std::nullopt;
    PropertyList::Dictionary entries;
    for (std::uint64_t i = 0; i < content->count; ++i) {
      auto key = readKey(referenceAt(*content, i));
      if (!key) return std::nullopt;
      auto value = readObject(referenceAt(*content, content->count + i), depth + 1);
      if (!value) return std::nullopt;
      entries.insert_or_assign(std::move(*key), std::move(*value));
    }
    return entries;
  }

  Text readKey(std::uint64_t number) {
    const auto start = find(number);
    if (!start) return std::nullopt;
    const unsigned type = markerAt(*start) >> 4;
    if (type != ascii && type != utf16) return fail("a key that is no text");
    return readText(*start);
  }

  /// Charged before any element is read: objects of different numbers may share the same bytes.
  std::optional<Content> readContainer(std::uint64_t start, std::uint64_t references,
                                       std::uint64_t elementSize) {
    const auto content = readCount(start);
    if (!content || !lies(content->start, content->count, references * referenceSize_) ||
        !charge(content->count == 0 ? 0 : collectionSize + content->count * elementSize))
      return std::nullopt;
    return content;
  }

  std::uint64_t referenceAt(const Content& content, std::uint64_t index) const {
    return numberAt(content.start + index * referenceSize_, referenceSize_);
  }

  std::optional<Content> readContent(std::uint64_t start, std::uint64_t width) {
    const auto content = readCount(start);
    if (!content || !lies(content->start, content->count, width) || !charge(content->count))
      return std::nullopt;
    return content;
  }

  /// The count in the marker's low half, or in the integer after it.
  std::optional<Content> readCount(std::uint64_t start) {
    const std::uint64_t count = markerAt(start) & 0xF;
    if (count < 0xF) return Content{start + 1, count};
    if (!lies(start + 1, 1)) return std::nullopt;
    const unsigned marker = markerAt(start + 1);
    if (marker >> 4 != integer || (marker & 0xF) > 3) return fail("a count that is no number");
    const std::uint64_t bytes = std::uint64_t{1} << (marker & 0xF);
    if (!lies(start + 2, bytes)) return std::nullopt;
    return Content{start + 2 + bytes, numberAt(start + 2, bytes)};
  }

  bool lies(std::uint64_t start, std::uint64_t count, std::uint64_t width = 1) {
    const bool inside = start <= tableStart_ && count <= (tableStart_ - start) / width;
    return inside || refuse("an object that runs over the end");
  }

  bool charge(std::uint64_t bytes) {
    unfolded_ += bytes;
    return unfolded_ <= maximumPropertyListSize ||
           refuse("its shared values unfold beyond the limit", Kind::tooLarge);
  }

  bool refuse(std::string_view detail, Kind kind = Kind::damaged) {
    fail(detail, kind);
    return false;
  }

  const std::string_view file_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t root_ = 0;
  std::uint64_t tableStart_ = 0;
  std::vector<bool> reached_;
  std::uint64_t unfolded_ = 0;
  PropertyListFault fault_{Kind::damaged};
};

}  // namespace

PropertyListReading readBinary(std::string_view file) {
  return BinaryReader(file).read();
}

}  // namespace sentrel::storage
