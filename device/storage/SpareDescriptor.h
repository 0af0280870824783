#pragma once

#include <mutex>
#include <optional>

#include "device/common/FileDescriptor.h"

namespace sentrel::storage {

/// A descriptor that a process keeps for reading its files once all others are used up. May be used
/// from any thread.
class SpareDescriptor {
 public:
  /// The one of this process, taken when it is first asked for.
  static SpareDescriptor& ofProcess();

  /// While it lives there is room for one file to be opened.
  class Loan {
   public:
    explicit Loan(SpareDescriptor& spare);
    ~Loan();
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

   private:
    SpareDescriptor& spare_;
    const std::lock_guard<std::mutex> alone_;
  };

 private:
  SpareDescriptor() { take(); }
  void take();

  std::mutex mutex_;
  std::optional<FileDescriptor> file_;
};

}  // namespace sentrel::storage
