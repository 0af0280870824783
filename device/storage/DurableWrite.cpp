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

constexpr std::string_view anyLetters = "XXXXXX";

/// What the names of all drafts of a file begin with.
std::string draftPrefix(const fs::path& target) {
  return "." + target.filename().string() + ".";
}

/// Takes away what killed writers have left.
void clearDrafts(const fs::path& target) {
  const std::string prefix = draftPrefix(target);
  std::error_code error;
  for (fs::directory_iterator entry(folderOf(target), error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename();
    if (name.size() == prefix.size() + anyLetters.size() && name.starts_with(prefix))
      ::unlink(entry->path().c_str());
  }
}

/// A file under a name of its own, removed unless it has been moved into place.
class Draft {
 public:
  explicit Draft(const fs::path& target)
      : path_(folderOf(target) + "/" + draftPrefix(target).append(anyLetters)),
        file_(::mkostemp(path_.data(), O_CLOEXEC)) {}

  ~Draft() {
    if (file_ && !moved_) ::unlink(path_.c_str());
  }

  /// Takes over what belongs to the file and not to its content; null for one that is new.
  bool resemble(const struct stat* old) {
    // Giving a file away is the privilege of few; without it the writer becomes the owner.
    if (old && (old->st_uid != ::geteuid() || old->st_gid != ::getegid()) &&
        ::fchown(file_.number(), old->st_uid, old->st_gid) != 0)
      errno = 0;
    return ::fchmod(file_.number(), old ? old->st_mode & 07777 : 0600) == 0;
  }

  bool write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(file_.number(), content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
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

void syncFolder(const std::string& folder) {
  const FileDescriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // The new file stands already; a folder that cannot be synchronised changes nothing about that.
  if (file) ::fsync(file.number());
}

}  // namespace

std::optional<std::string> targetOf(const std::string& hostPath) {
  struct stat status {};
  if (::lstat(hostPath.c_str(), &status) != 0)
    return errno == ENOENT ? std::optional(hostPath) : std::nullopt;
  if (!S_ISLNK(status.st_mode)) return hostPath;
  std::error_code error;
  const fs::path target = fs::canonical(hostPath, error);
  return error ? std::nullopt : std::optional(target.string());
}

std::string folderOf(const std::string& hostPath) {
  const fs::path folder = fs::path(hostPath).parent_path();
  return folder.empty() ? "." : folder.string();
}

bool writeDurably(const std::string& hostPath, std::string_view content) {
  const auto target = targetOf(hostPath);
  if (!target) return false;
  struct stat old {};
  const bool exists = ::stat(target->c_str(), &old) == 0;
  if (exists ? !S_ISREG(old.st_mode) : errno != ENOENT) return false;
  // All that may fail is done before the new file stands.
  const std::string folder = folderOf(*target);
  clearDrafts(*target);
  Draft draft(*target);
  if (!draft || !draft.resemble(exists ? &old : nullptr)) return false;
  if (!draft.write(content) || !draft.moveTo(*target)) return false;
  syncFolder(folder);
  return true;
}

}  // namespace sentrel::storage
