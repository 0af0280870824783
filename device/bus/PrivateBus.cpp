#include "device/bus/PrivateBus.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

#include "device/bus/BusError.h"

namespace sentrel::bus {
namespace {

namespace fs = std::filesystem;

constexpr const char* folderTemplate = "sentrel-bus-XXXXXX";
constexpr const char* socketName = "bus";
constexpr const char* configurationName = "bus.conf";
constexpr int addressDescriptor = 3;
constexpr std::chrono::seconds startTime{10};

/// Who may do what on the bus, and how much of it. A message larger than the bound costs its sender
/// the connection, so the bound lies well above what BusConnection sends.
constexpr const char* configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=@SOCKET@</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <deny own="*"/>
    <allow own_prefix="com.quorvin"/>
    <allow send_destination="*"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
  </policy>
  <limit name="max_message_size">33554432</limit>
  <limit name="max_message_unix_fds">0</limit>
  <limit name="max_incoming_bytes">67108864</limit>
  <limit name="max_outgoing_bytes">134217728</limit>
  <limit name="max_completed_connections">512</limit>
  <limit name="max_connections_per_user">512</limit>
  <limit name="max_names_per_connection">16</limit>
  <limit name="max_match_rules_per_connection">64</limit>
  <limit name="max_replies_per_connection">1024</limit>
</busconfig>
)";

[[noreturn]] void fail(const std::string& what) {
  throw BusError("cannot start a private bus: " + what);
}

[[noreturn]] void failWithErrno(const std::string& what) {
  fail(what + ": " + std::generic_category().message(errno));
}

/// Socket paths are short by law of the system, so a root or a temporary folder deep down in the
/// file system must not be a part of them.
bool isRoomForSocket(const fs::path& parent) {
  const fs::path socket = parent / folderTemplate / socketName;
  return parent.is_absolute() && socket.native().size() < sizeof(sockaddr_un::sun_path);
}

fs::path parentFolder() {
  for (const char* variable : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
    const char* folder = std::getenv(variable);
    if (folder && isRoomForSocket(folder) && access(folder, W_OK | X_OK) == 0) return folder;
  }
  return "/tmp";
}

fs::path makeFolder() {
  std::string folder = parentFolder() / folderTemplate;
  if (!mkdtemp(folder.data())) failWithErrno("no folder for its socket at " + folder);
  return folder;
}

/// As addresses of the bus want it; what is escaped this way needs no other escape in XML.
std::string escaped(const std::string& path) {
  constexpr std::string_view plain =
      "-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz/.";
  constexpr const char* digits = "0123456789abcdef";
  std::string text;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (plain.find(c) != std::string_view::npos)
      text += c;
    else
      text.append({'%', digits[byte / 16], digits[byte % 16]});
  }
  return text;
}

void writeConfiguration(const fs::path& folder) {
  constexpr std::string_view placeholder = "@SOCKET@";
  std::string text = configuration;
  text.replace(text.find(placeholder), placeholder.size(), escaped(folder / socketName));
  std::ofstream file(folder / configurationName);
  if (!(file << text << std::flush)) fail("cannot write into " + folder.string());
}

/// The child's side of the fork, up to the daemon. Only what is safe between fork and exec.
[[noreturn]] void becomeDaemon(pid_t parent, int addressPipe, char* const* arguments) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(1);  // it ended before we could ask to be told
  setsid();                           // an interrupt typed at the terminal is not for the bus
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  const int null = open("/dev/null", O_RDWR);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    dup2(null, standard);
  if (addressPipe == addressDescriptor)
    fcntl(addressPipe, F_SETFD, 0);
  else
    dup2(addressPipe, addressDescriptor);
  close_range(addressDescriptor + 1, UINT_MAX, 0);
  execvp(arguments[0], arguments);
  _exit(127);
}

/// One line from the daemon, or what has come of it when it ends or the time is over.
std::string readLine(int descriptor) {
  const auto deadline = std::chrono::steady_clock::now() + startTime;
  std::string line;
  while (line.find('\n') == std::string::npos) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd waiting{descriptor, POLLIN, 0};
    if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) == 0) break;
    std::array<char, 256> buffer;
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    line.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return line;
}

}  // namespace

PrivateBus::PrivateBus() : folder_(makeFolder()) {
  try {
    start();
  } catch (...) {
    end();
    throw;
  }
}

PrivateBus::~PrivateBus() {
  end();
}

/// Where the daemon says its address; the other end of the pipe is the daemon's alone.
FileDescriptor PrivateBus::startDaemon(char* const* arguments) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) failWithErrno("no pipe");
  FileDescriptor readEnd(ends[0]);
  const FileDescriptor writeEnd(ends[1]);
  const pid_t parent = getpid();
  daemon_ = fork();
  if (daemon_ == 0) becomeDaemon(parent, writeEnd.number(), arguments);
  return readEnd;
}

void PrivateBus::start() {
  writeConfiguration(folder_);
  std::string program = "dbus-daemon";
  std::string file = "--config-file=" + (folder_ / configurationName).string();
  std::string print = "--print-address=" + std::to_string(addressDescriptor);
  std::array<std::string, 3> flags{"--nofork", "--nopidfile", "--nosyslog"};
  char* const arguments[] = {program.data(),  file.data(),     print.data(), flags[0].data(),
                             flags[1].data(), flags[2].data(), nullptr};
  const FileDescriptor said = startDaemon(arguments);
  const std::string line = daemon_ > 0 ? readLine(said.number()) : std::string();
  if (line.empty() || line.back() != '\n')
    fail("dbus-daemon did not start; is the package dbus-daemon installed?");
  address_ = line.substr(0, line.find('\n'));
  // If this process is killed, the daemon takes its socket away, but nobody would take this.
  fs::remove(folder_ / configurationName);
}

void PrivateBus::end() noexcept {
  if (daemon_ > 0) {
    kill(daemon_, SIGKILL);  // nothing of it is to be kept, and this one also ends a stopped daemon
    while (waitpid(daemon_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

}  // namespace sentrel::bus
