#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// Writes a property list as XML, once. Ours and not libplist's, which writes text unchecked, needs
/// a second tree and takes longer than the disk.
class XmlWriter {
 public:
  /// `content` is a PropertyList or what one holds. None when XML has no form of it that can be
  /// read back.
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

  bool addText(std::string_view start, std::string_view text, std::string_view end);
  bool addElement(std::string_view start, std::string_view text, std::string_view end);
  void addEscaped(std::string_view text);
  void indent();

  std::string out_;
  std::size_t depth_ = 0;
};

}  // namespace sentrel::storage
