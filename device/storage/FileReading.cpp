#include "device/storage/FileReading.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "device/common/FileDescriptor.h"
#include "device/storage/PropertyListLimits.h"

namespace sentrel::storage {
namespace {

using Kind = PropertyListFault::Kind;

PropertyListFault faultOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return {Kind::missing};
    case EACCES:
    case EPERM:
      return {Kind::noPermission};
    case ENXIO:
      return {Kind::specialFile};
    case ELOOP:
      return {Kind::unreachable, "its links lead in a circle"};
    case ENAMETOOLONG:
      return {Kind::unreachable, "its name is too long"};
    default:
      return {Kind::unreadable, strerrordesc_np(error)};
  }
}

std::optional<PropertyListFault> judge(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return PropertyListFault{Kind::directory};
  if (S_ISFIFO(status.st_mode)) return PropertyListFault{Kind::pipe};
  if (!S_ISREG(status.st_mode)) return PropertyListFault{Kind::specialFile};
  if (status.st_size > static_cast<off_t>(maximumPropertyListSize))
    return PropertyListFault{Kind::tooLarge};
  return std::nullopt;
}

/// Fills `content` as far as the file goes.
std::optional<PropertyListFault> fill(const FileDescriptor& file, std::string& content) {
  std::size_t length = 0;
  while (length < content.size()) {
    const ssize_t got = ::read(file.number(), content.data() + length, content.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return faultOf(errno);
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  content.resize(length);
  return std::nullopt;
}

}  // namespace

std::variant<std::string, PropertyListFault> readWholeFile(const std::string& hostPath) {
  // Without O_NONBLOCK, opening a pipe would wait for its writer.
  const FileDescriptor file(::open(hostPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  if (!file) return faultOf(errno);
  struct stat status {};
  if (::fstat(file.number(), &status) != 0) return faultOf(errno);
  if (const auto fault = judge(status)) return *fault;
  // A byte more than its size shows a file that grew since, and a byte less one that shrank.
  std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
  if (const auto fault = fill(file, content)) return *fault;
  if (content.size() != static_cast<std::size_t>(status.st_size))
    return PropertyListFault{Kind::changing};
  return content;
}

}  // namespace sentrel::storage
