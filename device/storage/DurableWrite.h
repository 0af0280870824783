#pragma once

#include <string>
#include <string_view>

namespace sentrel::storage {

/// Puts a file with `content` in the place of the one at `hostPath`, so that everybody sees the old
/// or the new one whole, also after a crash. The old file's mode is kept, and its owner as far as
/// this process may; a new file is its owner's alone (0600). A link stays, and what it leads to is
/// replaced. Only a regular file is replaced.
///
/// Returns whether the new file stands; on false the old one is untouched. A process that is killed
/// here may leave a hidden file beside it, which nothing reads.
bool writeDurably(const std::string& hostPath, std::string_view content);

}  // namespace sentrel::storage
