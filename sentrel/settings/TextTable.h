#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Different texts in the order in which they were added, with a quick look-up.
///
/// Looking a text up is part of nearly every answer that the library gives, so it reads a table
/// with at least two places for each text: mostly one step, and no chain to follow.
class SENTREL_API TextTable {
 public:
  /// The text's index, in the order of adding; none when it is not here.
  std::optional<std::size_t> find(std::string_view text) const noexcept;

  /// Whether it was not here before.
  bool add(std::string_view text);

  /// Gives every later text the index before its own.
  void remove(std::string_view text);

  auto begin() const noexcept { return texts_.begin(); }
  auto end() const noexcept { return texts_.end(); }
  std::size_t size() const noexcept { return texts_.size(); }

 private:
  /// A free place has number 0, any other place the text's index plus 1.
  struct Place {
    std::uint32_t hash;
    std::uint32_t number;
  };

  void enter(std::size_t index);
  void rebuildPlaces();

  std::vector<std::string> texts_;
  std::vector<Place> places_;
};

}  // namespace sentrel
