#include "programs/sentrelctl/Explain.h"

#include <cstdio>

#include "programs/common/HomeScreenProbe.h"
#include "programs/common/OneLine.h"
#include "programs/sentrelctl/Printing.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::sentrelctl {
namespace {

void printStep(const char* question, const std::string& answer) {
  std::printf("%-22s %s\n", question, programs::oneLine(answer).c_str());
}

}  // namespace

void Explanation::step(const char* question, const std::string& answer) {
  steps_.emplace_back(question, answer);
}

void Explanation::stepUnknown(const char* question) {
  step(question, "unknown: the home screen does not answer");
}

void Explanation::stepsOfActivity() {
  step("enabled?", yesOrNo(SNSettings::sharedSettings().isSentrelEnabled()));
  stepOfNetwork();
}

void Explanation::stepOfNetwork() {
  if (!homeScreenAnswers()) return stepUnknown("trusted network?");
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  if (!name) return step("trusted network?", "no: none is joined");
  const bool isTrusted = SNSettings::sharedSettings().hasWiFiNetwork(*name);
  step("trusted network?", yesOrNo(isTrusted) + ": " + *name);
}

void Explanation::stepOfSession(std::string_view item) {
  if (!homeScreenAnswers()) return stepUnknown("open session?");
  const bool covered = SentrelController::sharedInstance().shouldIgnoreAuthentication(item);
  step("open session?", yesOrNo(covered) + ": " + std::string(item));
}

programs::ExitCode Explanation::conclude(const Context& context, bool isProtected) const {
  PropertyList::Array steps;
  for (const auto& [question, answer] : steps_)
    if (context.line.json)
      steps.emplace_back(PropertyList::Dictionary{{"question", question}, {"answer", answer}});
    else
      printStep(question, answer);
  if (context.line.json)
    print(context, PropertyList::Dictionary{{"protected", isProtected}, {"steps", steps}});
  else
    printStep("so it is", isProtected ? "protected" : "not protected");
  return isProtected ? programs::exitDone : programs::exitNo;
}

std::string yesOrNo(bool yes) {
  return yes ? "yes" : "no";
}

bool homeScreenAnswers() {
  static const bool answers = programs::isHomeScreenThere();
  return answers;
}

}  // namespace sentrel::sentrelctl
