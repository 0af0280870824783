#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Platform.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::host {

/// The file that holds what a passcode screen's delegate keeps beside the passcode.
inline constexpr const char* passcodeRecordPath =
    "/var/mobile/Library/Preferences/com.quorvin.sentrel.passcode.plist";

/// The entries of that file. It is made when first written. What cannot be read is never
/// overwritten; where it cannot be written, values last as long as the process.
class PasscodeRecord {
 public:
  /// `platform` outlives the record.
  explicit PasscodeRecord(Platform& platform) : platform_(platform) {}

  /// None for an entry that is absent or no number.
  std::optional<double> number(const std::string& key) const;
  std::optional<bool> flag(const std::string& key) const;

  void store(const std::string& key, PropertyList value);

 private:
  PropertyList::Dictionary entries() const;

  Platform& platform_;
  /// What the file did not take.
  PropertyList::Dictionary unwritten_;
};

}  // namespace sentrel::host
