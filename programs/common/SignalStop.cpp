#include "programs/common/SignalStop.h"

#include <csignal>

namespace sentrel::programs {
namespace {

loop::RunLoop* signalledLoop = nullptr;

void stop(int) {
  if (signalledLoop) signalledLoop->stop();
}

}  // namespace

void stopOnSignals(loop::RunLoop& loop) {
  signalledLoop = &loop;
  std::signal(SIGINT, stop);
  std::signal(SIGTERM, stop);
}

}  // namespace sentrel::programs
