#include "device/storage/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace sentrel::storage {

std::shared_ptr<FolderLock> FolderLock::take(const std::string& folder, Moment deadline) {
  // The system can wait for a lock for ever or not at all. So short that one who takes it again
  // and again leaves gaps enough.
  constexpr std::chrono::microseconds pause{250};
  FileDescriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!file) return nullptr;
  while (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
    const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
    if (!isTaken || std::chrono::steady_clock::now() >= deadline) return nullptr;
    std::this_thread::sleep_for(pause);
  }
  return std::make_shared<FolderLock>(std::move(file));
}

}  // namespace sentrel::storage
