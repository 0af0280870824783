#include "programs/common/RealProcess.h"

#include "sentrel/bridge/SNUtils.h"
#include "tests/support/BusTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::programs {
namespace {

TEST(RealProcess, LearnsOnItsOwnLoopHowAskingTheOwnerEnded) {
  const TemporaryFolder root;
  const bus::ChildProcess child([&root](const bus::ChildProcess::Ready& ready) {
    RealProcess self("test", std::string(springBoardBundleIdentifier), root.path(), "");
    self.device().sensor().isTouchIDCapable = true;
    self.device().sensor().evaluationError = PlatformError{"test", -2, "Canceled"};
    SNUtils::requestForAuthentication("Prove it",
                                      [&ready](bool, const std::optional<PlatformError>& error) {
                                        ready(error ? error->localizedDescription : "passed");
                                      });
    // Behind the reply, which is already due.
    self.loop().async([&self] { self.loop().stop(); });
    self.loop().run();
  });
  EXPECT_EQ(child.said(), "Canceled");
}

}  // namespace
}  // namespace sentrel::programs
