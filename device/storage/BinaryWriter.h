#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// Writes a property list in the binary form, once, each value for itself. For what XML cannot
/// carry: it need not be small.
class BinaryWriter {
 public:
  /// `content` is a PropertyList or what one holds. None when it could not be read back.
  template <class Content>
  std::optional<std::string> write(const Content& content) {
    begin();
    if (!add(content) || !end()) return std::nullopt;
    return std::move(out_);
  }

 private:
  void begin();
  bool end();

  bool add(const PropertyList& value);
  bool add(bool flag);
  bool add(std::int64_t number);
  bool add(std::uint64_t number);
  bool add(double number);
  bool add(const std::string& text);
  bool add(const PropertyList::Data& data);
  bool add(PropertyList::Date date);
  bool add(const PropertyList::Array& elements);
  bool add(const PropertyList::Dictionary& entries);

  bool addIdentifier(std::uint64_t number);
  void beginObject() { offsets_.push_back(out_.size()); }
  void addMarker(unsigned type, std::size_t count);
  void addNumber(std::uint64_t number, unsigned bytes);
  std::size_t addReferences(std::size_t count);

  template <class Content>
  bool addReferenced(std::size_t& reference, const Content& content);

  std::string out_;
  std::vector<std::uint64_t> offsets_;
  std::size_t depth_ = 0;
};

}  // namespace sentrel::storage
