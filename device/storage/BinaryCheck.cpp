#include "device/storage/BinaryCheck.h"

#include <cstdint>
#include <vector>

#include "device/storage/PropertyListLimits.h"
#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;

/// The least that one element of a collection costs in XML: "<true/>".
constexpr std::uint64_t smallestElementSize = 7;

enum Marker : unsigned {
  simple = 0x0,
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  ascii = 0x5,
  utf16 = 0x6,
  array = 0xA,
  dictionary = 0xD,
};

class BinaryCheck {
 public:
  explicit BinaryCheck(std::string_view file) : file_(file) {}

  std::optional<PropertyListFault> run() {
    const bool good = readTrailer() && checkObjects();
    if (good) return std::nullopt;
    return fault_;
  }

 private:
  struct Object {
    std::uint64_t number;
    std::size_t depth;
    bool isKey;
  };

  /// Where an object's content stands, and its count of bytes, characters or elements.
  struct Content {
    std::uint64_t start;
    std::uint64_t count;
  };

  bool fail(std::string_view detail, Kind kind = Kind::damaged) {
    fault_ = {kind, detail};
    return false;
  }

  std::uint64_t numberAt(std::uint64_t start, std::uint64_t bytes) const {
    std::uint64_t number = 0;
    for (std::uint64_t i = 0; i < bytes; ++i)
      number = number << 8 | static_cast<unsigned char>(file_[start + i]);
    return number;
  }

  bool readTrailer() {
    if (!file_.starts_with("bplist00")) return fail("an unknown version of the binary form");
    if (file_.size() < headerSize + trailerSize) return fail("it ends too early");
    const std::uint64_t trailer = file_.size() - trailerSize;
    offsetSize_ = numberAt(trailer + 6, 1);
    referenceSize_ = numberAt(trailer + 7, 1);
    objectCount_ = numberAt(trailer + 8, 8);
    root_ = numberAt(trailer + 16, 8);
    tableStart_ = numberAt(trailer + 24, 8);
    const bool sizes =
        offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
    if (!sizes || tableStart_ <= headerSize || tableStart_ > trailer)
      return fail("its trailer makes no sense");
    const bool fits = objectCount_ <= (trailer - tableStart_) / offsetSize_;
    return fits || fail("it promises more objects than it holds");
  }

  bool checkObjects() {
    reached_.resize(objectCount_);
    waiting_.push_back({root_, 1, false});
    while (!waiting_.empty()) {
      const Object object = waiting_.back();
      waiting_.pop_back();
      if (!checkObject(object)) return false;
    }
    return true;
  }

  bool checkObject(const Object& object) {
    if (object.number >= objectCount_) return fail("a reference to no object");
    const std::uint64_t start = numberAt(tableStart_ + object.number * offsetSize_, offsetSize_);
    if (start < headerSize || start >= tableStart_) return fail("an object outside the file");
    const auto marker = static_cast<unsigned char>(file_[start]);
    const unsigned type = marker >> 4;
    if (object.isKey && type != ascii && type != utf16) return fail("a key that is no text");
    switch (type) {
      case simple:
        return checkSimple(marker);
      case integer:
      case real:
      case date:
        return checkNumber(type, marker & 0xF, start);
      case data:
      case ascii:
      case utf16:
        return checkText(type, start);
      case array:
      case dictionary:
        return checkContainer(type, start, object);
      default:
        return fail({}, Kind::unsupportedType);
    }
  }

  bool checkSimple(unsigned marker) {
    const bool flag = marker == 0x08 || marker == 0x09;
    return flag || fail({}, Kind::unsupportedType);
  }

  /// The size of a number is a power of two.
  bool checkNumber(unsigned type, unsigned power, std::uint64_t start) {
    if (type == integer && power > 3) return fail("an integer that does not fit 64 bits");
    if (type == real && power != 2 && power != 3) return fail("a real of unknown size");
    if (type == date && power != 3) return fail("a date of unknown size");
    return lies(start + 1, std::uint64_t{1} << power);
  }

  bool checkText(unsigned type, std::uint64_t start) {
    Content content;
    const std::uint64_t width = type == utf16 ? 2 : 1;
    if (!readCount(start, content)) return false;
    if (!lies(content.start, content.count, width) || !charge(content.count)) return false;
    if (type == utf16) return checkUtf16(content);
    return type == data || checkBytes(file_.substr(content.start, content.count));
  }

  bool checkBytes(std::string_view text) {
    if (qualityOf(text) == TextQuality::notUtf8) return fail({}, Kind::notUtf8);
    return text.find('\0') == text.npos || fail("a zero inside a text");
  }

  bool checkUtf16(const Content& content) {
    bool high = false;
    for (std::uint64_t i = 0; i < content.count; ++i) {
      const std::uint64_t unit = numberAt(content.start + 2 * i, 2);
      if (unit == 0) return fail("a zero inside a text");
      const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
      if (high != low) return fail("half a character", Kind::notUtf8);
      high = unit >= 0xD800 && unit <= 0xDBFF;
    }
    return !high || fail("half a character", Kind::notUtf8);
  }

  bool checkContainer(unsigned type, std::uint64_t start, const Object& object) {
    if (reached_[object.number]) return fail("a collection that is used twice");
    reached_[object.number] = true;
    if (object.depth > maximumPropertyListDepth) return fail({}, Kind::tooDeep);
    Content content;
    const std::uint64_t perElement = type == dictionary ? 2 : 1;
    if (!readCount(start, content)) return false;
    if (!lies(content.start, content.count, perElement * referenceSize_)) return false;
    // Charged before they are queued: objects of different numbers may share the same bytes.
    const std::uint64_t elements = content.count * perElement;
    if (!charge(elements * smallestElementSize)) return false;
    for (std::uint64_t i = 0; i < elements; ++i) {
      const std::uint64_t number = numberAt(content.start + i * referenceSize_, referenceSize_);
      waiting_.push_back({number, object.depth + 1, type == dictionary && i < content.count});
    }
    return true;
  }

  /// The count in the marker's low half, or in the integer after it.
  bool readCount(std::uint64_t start, Content& content) {
    content = {start + 1, numberAt(start, 1) & 0xF};
    if (content.count < 0xF) return true;
    if (!lies(start + 1, 1)) return false;
    const std::uint64_t marker = numberAt(start + 1, 1);
    if (marker >> 4 != integer || (marker & 0xF) > 3) return fail("a count that is no number");
    const std::uint64_t bytes = std::uint64_t{1} << (marker & 0xF);
    if (!lies(start + 2, bytes)) return false;
    content = {start + 2 + bytes, numberAt(start + 2, bytes)};
    return true;
  }

  bool lies(std::uint64_t start, std::uint64_t count, std::uint64_t width = 1) {
    const bool inside = start <= tableStart_ && count <= (tableStart_ - start) / width;
    return inside || fail("an object that runs over the end");
  }

  bool charge(std::uint64_t bytes) {
    unfolded_ += bytes;
    return unfolded_ <= maximumPropertyListSize ||
           fail("its shared values unfold beyond the limit", Kind::tooLarge);
  }

  const std::string_view file_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t root_ = 0;
  std::uint64_t tableStart_ = 0;
  std::vector<bool> reached_;
  std::vector<Object> waiting_;
  std::uint64_t unfolded_ = 0;
  PropertyListFault fault_{Kind::damaged};
};

}  // namespace

std::optional<PropertyListFault> checkBinary(std::string_view file) {
  return BinaryCheck(file).run();
}

}  // namespace sentrel::storage
