#include "programs/common/HomeScreenProbe.h"

#include "programs/common/CommandLine.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::programs {

bool isHomeScreenThere() {
  return SNUtils::sendMessageToSpringBoardAndReceiveReplyName(messages::IsDeviceLocked::name, {})
      .has_value();
}

void requireHomeScreen() {
  if (!isHomeScreenThere()) throw ProgramError("the home-screen process does not answer");
}

}  // namespace sentrel::programs
