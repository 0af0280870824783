#pragma once

#include <string>
#include <utility>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Overwrites what `text` holds, in a way that the compiler keeps, and empties it.
SENTREL_API void wipe(std::string& text) noexcept;

/// A text that is overwritten before its memory is given back.
class SENTREL_API SecretText {
 public:
  explicit SecretText(std::string text) : text_(std::move(text)) { wipe(text); }
  ~SecretText() { wipe(text_); }
  SecretText(const SecretText&) = delete;
  SecretText& operator=(const SecretText&) = delete;

  const std::string& text() const noexcept { return text_; }

 private:
  std::string text_;
};

}  // namespace sentrel
