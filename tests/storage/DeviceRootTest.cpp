#include "device/storage/DeviceRoot.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device/storage/RootedFiles.h"
#include "tests/support/CountedAllocations.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::storage {
namespace {

TEST(DeviceRoot, PutsAbsolutePathsUnderItsFolder) {
  EXPECT_EQ(DeviceRoot("/phone/").hostPath("/var/a..b/c"), "/phone/var/a..b/c");
  EXPECT_EQ(DeviceRoot("/").hostPath("/var"), "/var");
  EXPECT_EQ(DeviceRoot("phone").hostPath("/"), "phone/");
  EXPECT_EQ(DeviceRoot("/phone").hostPath("/.../..a/a../...")->size(), 22U);
}

TEST(DeviceRoot, LetsNoPathOut) {
  const DeviceRoot root("/phone");
  for (const std::string path : {"", "var", "../var", "/..", "/../etc", "/var/../../etc", "/a/..",
                                 "/a/b..c/../d", "/...//../x", "/.../.."})
    EXPECT_FALSE(root.hostPath(path)) << path;
  EXPECT_FALSE(root.hostPath(std::string("/var\0/x", 7)));
}

TEST(RootedFiles, KnowsWhatExists) {
  const TemporaryFolder folder;
  folder.put("file", "");
  std::filesystem::create_symlink("nowhere", folder.path("dangling"));
  const RootedFiles files{DeviceRoot(folder.path())};
  EXPECT_TRUE(files.fileExists("/file"));
  EXPECT_TRUE(files.fileExists("/"));
  EXPECT_FALSE(files.fileExists("/missing"));
  EXPECT_FALSE(files.fileExists("/file/below"));
  EXPECT_FALSE(files.fileExists("/dangling"));
  EXPECT_FALSE(files.fileExists("file"));
  EXPECT_FALSE(files.fileExists("/" + std::string(300, 'n')));
}

TEST(RootedFiles, TakeWhatCannotBeToldForThere) {
  const TemporaryFolder folder;
  const RootedFiles files{DeviceRoot(folder.path())};
  ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
  const pid_t child = ::fork();
  // Root may look everywhere; a user without a name may not.
  if (child == 0)
    ::_exit(::setuid(65534) == 0 || ::chmod(folder.path().c_str(), 0) == 0 ? !files.fileExists("/x")
                                                                           : 2);
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST(RootedFiles, AllocateForThePathOnThisMachineAlone) {
  const TemporaryFolder folder;
  const RootedFiles files{DeviceRoot(folder.path())};
  const std::string path = "/Library/MobileSubstrate/DynamicLibraries/Flipswitch.dylib";
  const std::size_t before = allocationsSoFar();
  files.fileExists(path);
  EXPECT_EQ(allocationsSoFar() - before, 1U);
}

}  // namespace
}  // namespace sentrel::storage
