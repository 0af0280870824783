#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "device/common/FileDescriptor.h"

namespace sentrel::storage {

/// What one writer at a time holds of a folder, among all processes. It ends with its holder,
/// however that ends. It is a lock on the folder itself, which leaves no file behind, and keeps
/// nobody from reading.
class FolderLock {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// Null where another holds it until `deadline`, and where the folder cannot be opened.
  static std::shared_ptr<FolderLock> take(const std::string& folder, Moment deadline);

  explicit FolderLock(FileDescriptor folder) : folder_(std::move(folder)) {}

 private:
  const FileDescriptor folder_;
};

}  // namespace sentrel::storage
