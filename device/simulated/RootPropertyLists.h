#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device/storage/DeviceRoot.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::simulated {

/// The property lists under a device root, and what was found wrong with them. Paths are absolute
/// paths of the device.
class RootPropertyLists {
 public:
  explicit RootPropertyLists(storage::DeviceRoot root) : root_(std::move(root)) {}

  /// Whether it is fine that there is no such file, or worth a complaint.
  enum class Missing { isFine, isAFault };

  /// The dictionary in a file. None, with a complaint, where something is there that is none.
  std::optional<PropertyList::Dictionary> read(const std::string& path,
                                               Missing missing = Missing::isFine);

  /// The list under `key`. Empty, with a complaint, where something is there that is none; `place`
  /// says to people where `entries` were found.
  PropertyList::Array list(const std::string& place, const PropertyList::Dictionary& entries,
                           std::string_view key);

  /// The texts in such a list. What is no text is left out with a complaint.
  std::vector<std::string> texts(const std::string& place, const PropertyList::Dictionary& entries,
                                 std::string_view key);

  /// The text under `key`; null where there is none, or an empty one. What is no text is complained
  /// about. Lives as long as `entries`.
  const std::string* text(const std::string& place, const PropertyList::Dictionary& entries,
                          std::string_view key);

  /// The number under `key`; null, with a complaint, where something else is there. `what` says
  /// what was expected.
  const PropertyList* number(const std::string& place, const PropertyList::Dictionary& entries,
                             std::string_view key, const char* what);

  bool isFolder(const std::string& path) const;

  /// Where a file of whatever content lies on this machine; none where there is no such file.
  std::optional<std::string> hostFile(const std::string& path) const;

  /// The folders in a folder in the order of their names, so that every run sees the same device.
  std::vector<std::string> foldersIn(const std::string& path);

  void complain(const std::string& place, const std::string& fault);

  /// One line for each complaint.
  const std::vector<std::string>& complaints() const noexcept { return complaints_; }

  /// Whether every file was read that is there: none was left out for want of a descriptor or
  /// memory, or because the disk failed.
  bool isComplete() const noexcept { return isComplete_; }

 private:
  void missOut(const std::string& place, const std::string& fault);

  storage::DeviceRoot root_;
  bool isComplete_ = true;
  std::vector<std::string> complaints_;
};

/// The text under `key`; null where there is none, or an empty one.
const std::string* textUnder(const PropertyList::Dictionary& entries, std::string_view key);

}  // namespace sentrel::simulated
