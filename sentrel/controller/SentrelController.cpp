#include "sentrel/controller/SentrelController.h"

#include "sentrel/Process.h"

namespace sentrel {

SentrelController::SentrelController(Platform& platform, SNSettings& settings)
    : platform_(platform), settings_(settings) {}

SentrelController& SentrelController::sharedInstance() {
  return Process::current().controller();
}

}  // namespace sentrel
