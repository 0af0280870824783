#pragma once

#include <string>
#include <string_view>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The home-screen process's bundle identifier: the process with this name holds the truth.
inline constexpr std::string_view springBoardBundleIdentifier = "com.apple.springboard";

/// The bundle of the program that this process runs: who it is, and its translated texts.
class SENTREL_API MainBundle {
 public:
  virtual ~MainBundle() = default;

  /// Never empty for a process that the system started.
  virtual const std::string& bundleIdentifier() const = 0;

  /// The text for `key` in the default table of the current language, or `key` itself where the
  /// table has none. The view lives until the language changes, or as long as `key`.
  virtual std::string_view localizedString(std::string_view key) const = 0;
};

}  // namespace sentrel
