#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sentrel::storage {

/// The file that the links at `hostPath` end in; `hostPath` itself where there is no link. None
/// when they end nowhere, or cannot be followed.
std::optional<std::string> targetOf(const std::string& hostPath);

/// The folder that the file at `hostPath` lies in.
std::string folderOf(const std::string& hostPath);

/// Puts a file with `content` in the place of the one at `hostPath`, so that everybody sees the old
/// or the new one whole, also after a crash. The old file's mode is kept, and its owner as far as
/// this process may; a new file is its owner's alone (0600). A link stays, and what it leads to is
/// replaced. Only a regular file is replaced.
///
/// Returns whether the new file stands; on false the old one is untouched. A process that is killed
/// here may leave a draft, a hidden file beside it that nothing reads; the next write takes it
/// away. So whoever writes has to hold the lock of the folder.
bool writeDurably(const std::string& hostPath, std::string_view content);

}  // namespace sentrel::storage
