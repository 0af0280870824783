// Stands in for the system's calls for files and memory, so that each of them can be made to fail.
// Linked into a program, or preloaded into one and told by SENTREL_FAULT what to do, as
// "KINDS AT ERROR MODE" in numbers; the file that SENTREL_FAULT_COUNT names then gets the number
// of calls. With SENTREL_STOP_AT_END the process stops at its end, to be looked into.

#include "tests/torture/FaultInjection.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);
}

namespace sentrel::torture {
namespace {

unsigned countedKinds = 0;
long failingCall = 0;
int failure = 0;
Mode mode = Mode::once;
std::atomic<long> calls{0};

bool isTurn(Kinds kind) {
  if (!(countedKinds & kind)) return false;
  const long call = ++calls;
  return call == failingCall || (mode == Mode::lasting && failingCall > 0 && call > failingCall);
}

/// Whether the call is to fail, with errno set.
bool fails(Kinds kind) {
  if (!isTurn(kind)) return false;
  if (mode == Mode::kill) ::kill(::getpid(), SIGKILL);
  if (failure != 0) errno = failure;
  return failure != 0;
}

template <class Function>
Function* real(Function*, const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

struct FromEnvironment {
  FromEnvironment() {
    unsigned kinds = 0;
    int number = 0;
    const char* const plan = ::getenv("SENTREL_FAULT");
    if (plan && std::sscanf(plan, "%u %ld %d %d", &kinds, &failingCall, &failure, &number) == 4) {
      mode = static_cast<Mode>(number);
      countedKinds = kinds;
    }
  }
  ~FromEnvironment() {
    const long counted = disarm();
    const char* const path = ::getenv("SENTREL_FAULT_COUNT");
    const int file = path ? ::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0600) : -1;
    if (file >= 0) ::dprintf(file, "%ld\n", counted);
    if (::getenv("SENTREL_STOP_AT_END")) ::raise(SIGSTOP);
  }
} const fromEnvironment;

}  // namespace

void arm(unsigned kinds, long at, int error, Mode how) {
  calls = 0;
  failingCall = at;
  failure = error;
  mode = how;
  countedKinds = kinds;
}

long disarm() {
  countedKinds = 0;
  return calls;
}

}  // namespace sentrel::torture

using namespace sentrel::torture;

// NOLINTBEGIN: the names and parameters are the system's.
#pragma GCC visibility push(default)
#pragma GCC diagnostic ignored "-Wshadow"  // there is a struct flock, too
extern "C" {

#define STAND_IN(result, name, parameters, arguments, failed) \
  result name parameters {                                    \
    static auto* const next = real(&name, #name);             \
    return fails(files) ? failed : next arguments;            \
  }

#define STAND_IN_OPEN(name, parameters, arguments)                      \
  int name parameters {                                                 \
    va_list list;                                                       \
    va_start(list, flags);                                              \
    const mode_t access = (flags & O_CREAT) ? va_arg(list, mode_t) : 0; \
    va_end(list);                                                       \
    static auto* const next = real(&name, #name);                       \
    return fails(files) ? -1 : next arguments;                          \
  }

STAND_IN_OPEN(open, (const char* path, int flags, ...), (path, flags, access))
STAND_IN_OPEN(openat, (int at, const char* path, int flags, ...), (at, path, flags, access))
STAND_IN(int, mkostemp, (char* path, int flags), (path, flags), -1)
STAND_IN(int, stat, (const char* path, struct stat* it), (path, it), -1)
STAND_IN(int, lstat, (const char* path, struct stat* it), (path, it), -1)
STAND_IN(int, fstat, (int file, struct stat* it), (file, it), -1)
STAND_IN(int, fsync, (int file), (file), -1)
STAND_IN(int, fchmod, (int file, mode_t to), (file, to), -1)
STAND_IN(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), -1)
STAND_IN(int, flock, (int file, int operation), (file, operation), -1)
STAND_IN(int, rename, (const char* from, const char* to), (from, to), -1)
STAND_IN(int, unlink, (const char* path), (path), -1)
STAND_IN(int, mkdir, (const char* path, mode_t access), (path, access), -1)
STAND_IN(char*, realpath, (const char* path, char* to), (path, to), nullptr)
STAND_IN(DIR*, opendir, (const char* path), (path), nullptr)
STAND_IN(DIR*, fdopendir, (int file), (file), nullptr)

struct dirent* readdir(DIR* folder) {
  static auto* const next = real(&readdir, "readdir");
  return fails(files) ? nullptr : next(folder);
}

// By the system's own number, since whoever is killed in the middle is to have written half.
ssize_t read(int file, void* to, size_t size) {
  if (file > STDERR_FILENO && isTurn(files)) {
    if (mode == Mode::kill) ::kill(::getpid(), SIGKILL);
    if (failure == 0) return 0;
    errno = failure;
    return -1;
  }
  return ::syscall(SYS_read, file, to, size);
}

ssize_t write(int file, const void* from, size_t size) {
  if (file > STDERR_FILENO && isTurn(files)) {
    if (mode == Mode::kill || failure == 0) size = (size + 1) / 2;
    const ssize_t half =
        mode == Mode::kill || failure == 0 ? ::syscall(SYS_write, file, from, size) : -1;
    if (mode == Mode::kill) ::kill(::getpid(), SIGKILL);
    if (failure != 0) errno = failure;
    return half;
  }
  return ::syscall(SYS_write, file, from, size);
}

void* malloc(size_t size) {
  return fails(memory) ? nullptr : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
  return fails(memory) ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
  return fails(memory) ? nullptr : __libc_realloc(block, size);
}
void* aligned_alloc(size_t alignment, size_t size) {
  return fails(memory) ? nullptr : __libc_memalign(alignment, size);
}

}  // extern "C"
#pragma GCC visibility pop
// NOLINTEND
