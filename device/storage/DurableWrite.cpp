#include "device/storage/DurableWrite.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "device/common/FileDescriptor.h"

namespace sentrel::storage {
namespace {

namespace fs = std::filesystem;

/// A file under a name of its own, removed unless it has been moved into place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target)
      : path_((target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string()),
        file_(::mkostemp(path_.data(), O_CLOEXEC)) {}

  ~TemporaryFile() {
    if (file_ && !moved_) ::unlink(path_.c_str());
  }

  bool resemble(const struct stat& old) {
    // Giving a file away is the privilege of few; without it the writer becomes the owner.
    if ((old.st_uid != ::geteuid() || old.st_gid != ::getegid()) &&
        ::fchown(file_.number(), old.st_uid, old.st_gid) != 0)
      errno = 0;
    return ::fchmod(file_.number(), old.st_mode & 07777) == 0;
  }

  bool write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(file_.number(), content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      content.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(file_.number()) == 0;
  }

  bool moveTo(const fs::path& target) {
    moved_ = std::rename(path_.c_str(), target.c_str()) == 0;
    return moved_;
  }

  explicit operator bool() const noexcept { return static_cast<bool>(file_); }

 private:
  std::string path_;
  FileDescriptor file_;
  bool moved_ = false;
};

/// The file that a chain of links ends in; `path` itself when nothing stands there. None when the
/// chain ends nowhere.
std::optional<fs::path> targetOf(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  fs::path target = fs::canonical(path, error);
  if (error) return std::nullopt;
  return target;
}

void syncFolder(const fs::path& folder) {
  const FileDescriptor file(
      ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // The new file stands already; a folder that cannot be synchronised changes nothing about that.
  if (file) ::fsync(file.number());
}

}  // namespace

bool writeDurably(const std::string& hostPath, std::string_view content) {
  const auto target = targetOf(hostPath);
  if (!target) return false;
  struct stat old {};
  const bool exists = ::stat(target->c_str(), &old) == 0;
  if (exists ? !S_ISREG(old.st_mode) : errno != ENOENT) return false;
  TemporaryFile file(*target);
  if (!file || (exists && !file.resemble(old))) return false;
  if (!file.write(content) || !file.moveTo(*target)) return false;
  syncFolder(target->parent_path());
  return true;
}

}  // namespace sentrel::storage
