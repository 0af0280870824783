#include "device/bus/DeviceBus.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "device/bus/BusError.h"
#include "device/common/FileDescriptor.h"

namespace sentrel::bus {
namespace {

namespace fs = std::filesystem;

fs::path folderOn(const std::string& root) {
  return fs::path(root) / "var/run/sentrel";
}
fs::path addressFileOn(const std::string& root) {
  return folderOn(root) / "bus-address";
}

[[noreturn]] void fail(const std::string& what, const fs::path& where, int error) {
  throw BusError(what + " " + where.string() + ": " + std::generic_category().message(error));
}

std::optional<std::string> namedBus(const BusChoice& choice) {
  if (!choice.address.empty()) return choice.address;
  const char* address = std::getenv("SENTREL_BUS");
  if (address && *address) return address;
  return std::nullopt;
}

/// The file's only line. Whatever else may stand in the file's place holds no address.
std::optional<std::string> readAddress(const fs::path& path) {
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::array<char, 1024> buffer;
  const ssize_t count = read(file.number(), buffer.data(), buffer.size());
  if (count <= 0) return std::nullopt;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(count));
  const auto end = text.find('\n');
  if (end == std::string_view::npos || end == 0) return std::nullopt;
  return std::string(text.substr(0, end));
}

/// Nothing outlives a crash of the machine here, so the file need not be flushed to the disk.
void writeAddress(const fs::path& path, const std::string& address) {
  const fs::path draft = path.string() + ".new";
  const FileDescriptor file(
      open(draft.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file) fail("cannot write", draft, errno);
  const std::string line = address + "\n";
  const ssize_t count = write(file.number(), line.data(), line.size());
  if (count != static_cast<ssize_t>(line.size())) fail("cannot write", draft, errno);
  if (rename(draft.c_str(), path.c_str()) != 0) fail("cannot write", path, errno);
}

/// Undoes the escapes of a bus address; none where they are broken.
std::optional<std::string> unescaped(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    if (text.front() != '%') {
      plain += text.front();
      text.remove_prefix(1);
      continue;
    }
    unsigned byte = 0;
    const char* const end = text.data() + std::min<std::size_t>(text.size(), 3);
    const auto [stop, error] = std::from_chars(text.data() + 1, end, byte, 16);
    if (error != std::errc() || stop != text.data() + 3) return std::nullopt;
    plain += static_cast<char>(byte);
    text.remove_prefix(3);
  }
  return plain;
}

/// Where the socket lies of a bus whose address a private bus has printed.
std::optional<std::string> socketPath(std::string_view address) {
  constexpr std::string_view prefix = "unix:path=";
  if (!address.starts_with(prefix)) return std::nullopt;
  address.remove_prefix(prefix.size());
  return unescaped(address.substr(0, address.find(',')));
}

/// Whether somebody listens there.
bool isAlive(const std::string& path) {
  sockaddr_un name{AF_UNIX, {}};
  if (path.size() >= sizeof name.sun_path) return false;
  std::copy(path.begin(), path.end(), name.sun_path);
  const FileDescriptor end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!end) return false;
  const auto* const target = reinterpret_cast<const sockaddr*>(&name);
  return connect(end.number(), target, sizeof name) == 0 || errno == EAGAIN;  // alive, but busy
}

/// Held by the one home-screen process of a root that looks for the bus or ends it.
FileDescriptor lockFolder(const fs::path& folder) {
  const fs::path path = folder / "bus-lock";
  FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file) fail("cannot open", path, errno);
  while (flock(file.number(), LOCK_EX) != 0)
    if (errno != EINTR) fail("cannot lock", path, errno);
  return file;
}

}  // namespace

std::optional<std::string> findBus(const BusChoice& choice) {
  if (auto named = namedBus(choice)) return named;
  return readAddress(addressFileOn(choice.root));
}

HomeScreenBus::HomeScreenBus(const BusChoice& choice) : root_(choice.root) {
  if (auto named = namedBus(choice))
    address_ = std::move(*named);
  else
    startOrJoin();
}

void HomeScreenBus::startOrJoin() {
  const fs::path folder = folderOn(root_);
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) fail("cannot make", folder, error.value());
  const FileDescriptor lock = lockFolder(folder);
  const auto found = readAddress(addressFileOn(root_));
  const auto path = found ? socketPath(*found) : std::nullopt;
  if (path && isAlive(*path)) {
    address_ = *found;
    return;
  }
  // A home-screen process that was killed leaves the empty folder of its bus.
  if (path) rmdir(fs::path(*path).parent_path().c_str());
  own_ = std::make_unique<PrivateBus>();
  address_ = own_->address();
  writeAddress(addressFileOn(root_), address_);
}

HomeScreenBus::~HomeScreenBus() {
  if (!own_) return;
  try {
    const FileDescriptor lock = lockFolder(folderOn(root_));
    const fs::path file = addressFileOn(root_);
    if (readAddress(file) == address_) unlink(file.c_str());
    own_.reset();
  } catch (const std::exception&) {
    // The root is gone; the bus ends with its owner all the same.
  }
}

}  // namespace sentrel::bus
