#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace sentrel::storage {

/// Puts a binary property list together object by object, right or wrong. References are two bytes
/// wide unless said otherwise, offsets four.
class BinaryListBuilder {
 public:
  explicit BinaryListBuilder(unsigned referenceSize = 2) : referenceSize_(referenceSize) {}

  /// Adds an object with these bytes, marker included, and answers its number.
  std::uint32_t add(const std::string& bytes) {
    offsets_.push_back(static_cast<std::uint32_t>(file_.size()));
    file_ += bytes;
    return static_cast<std::uint32_t>(offsets_.size() - 1);
  }

  std::uint32_t addContainer(char type, const std::vector<std::uint32_t>& references,
                             std::size_t count) {
    std::string bytes;
    if (count < 15) {
      bytes += static_cast<char>(type | static_cast<char>(count));
    } else {
      bytes += static_cast<char>(type | 0xF);
      bytes += '\x12' + number(count, 4);
    }
    for (const std::uint32_t reference : references)
      bytes += number(reference, referenceSize_);
    return add(bytes);
  }
  std::uint32_t addArray(const std::vector<std::uint32_t>& elements) {
    return addContainer('\xA0', elements, elements.size());
  }
  /// Keys first, then values.
  std::uint32_t addDictionary(const std::vector<std::uint32_t>& references) {
    return addContainer('\xD0', references, references.size() / 2);
  }

  std::string finish(std::uint32_t root) const {
    std::string file = file_;
    for (const std::uint32_t offset : offsets_)
      file += number(offset, 4);
    file += std::string(6, '\0') + '\x04' + static_cast<char>(referenceSize_);
    return file + number(offsets_.size(), 8) + number(root, 8) + number(file_.size(), 8);
  }

  static std::string number(std::uint64_t value, unsigned bytes) {
    std::string text;
    while (bytes-- > 0)
      text += static_cast<char>(value >> (8 * bytes));
    return text;
  }

 private:
  unsigned referenceSize_;
  std::string file_ = "bplist00";
  std::vector<std::uint32_t> offsets_;
};

}  // namespace sentrel::storage
