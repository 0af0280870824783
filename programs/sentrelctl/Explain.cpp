#include "programs/sentrelctl/Explain.h"

#include <cstdio>

#include "programs/common/HomeScreenProbe.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::sentrelctl {
namespace {

void explainNetwork(const SNSettings& settings) {
  if (!homeScreenAnswers()) return stepUnknown("trusted network?");
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  if (!name) return step("trusted network?", "no: none is joined");
  step("trusted network?", yesOrNo(settings.hasWiFiNetwork(*name)) + ": " + *name);
}

}  // namespace

void step(const char* question, const std::string& answer) {
  std::printf("%-22s %s\n", question, answer.c_str());
}

std::string yesOrNo(bool yes) {
  return yes ? "yes" : "no";
}

void stepUnknown(const char* question) {
  step(question, "unknown: the home screen does not answer");
}

bool homeScreenAnswers() {
  static const bool answers = programs::isHomeScreenThere();
  return answers;
}

void explainActivity() {
  const SNSettings& settings = SNSettings::sharedSettings();
  step("enabled?", yesOrNo(settings.isSentrelEnabled()));
  explainNetwork(settings);
}

void explainSession(std::string_view item) {
  if (!homeScreenAnswers()) return stepUnknown("open session?");
  const bool covered = SentrelController::sharedInstance().shouldIgnoreAuthentication(item);
  step("open session?", yesOrNo(covered) + ": " + std::string(item));
}

programs::ExitCode conclude(bool isProtected) {
  step("so it is", isProtected ? "protected" : "not protected");
  return isProtected ? programs::exitDone : programs::exitNo;
}

}  // namespace sentrel::sentrelctl
