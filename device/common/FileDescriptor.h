#pragma once

#include <unistd.h>

#include <utility>

namespace sentrel {

/// Owns a descriptor of this machine: an open file, a socket, an end of a pipe. A negative number
/// is none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number) noexcept : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int number() const noexcept { return number_; }
  explicit operator bool() const noexcept { return number_ >= 0; }

 private:
  int number_;
};

}  // namespace sentrel
