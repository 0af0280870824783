#pragma once

#include <concepts>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// One argument of a format text, already rendered. What is costly to put together is handed over
/// as a function that does it.
class SENTREL_API TextArgument {
 public:
  TextArgument(std::string_view text) : text_(text) {}
  TextArgument(const std::string& text) : text_(text) {}
  TextArgument(const char* text) : text_(text) {}
  TextArgument(std::integral auto number) : text_(std::to_string(number)) {}
  TextArgument(const PropertyList& value) : text_(describe(value)) {}
  TextArgument(const PropertyList::Array& value) : text_(describe(value)) {}
  TextArgument(const PropertyList::Dictionary& value) : text_(describe(value)) {}
  TextArgument(const std::invocable auto& make) : TextArgument(make()) {}
  template <class T>
  TextArgument(const std::optional<T>& value)
      : text_(value ? TextArgument(*value).text_ : "(null)") {}

  const std::string& text() const noexcept { return text_; }

 private:
  std::string text_;
};

/// Replaces each %@, %d, %i, %u, %ld, %li and %lu of `format` by the next argument, and %% by a per
/// cent sign. A directive without an argument stays as it is; surplus arguments are dropped. The
/// arguments themselves are never read as formats.
SENTREL_API std::string formatText(std::string_view format,
                                   std::initializer_list<TextArgument> arguments);

}  // namespace sentrel
