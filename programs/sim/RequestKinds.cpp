#include "programs/sim/RequestKinds.h"

#include <utility>

namespace sentrel::sim {

void requireInstalled(Phone& phone, const std::string& bundleIdentifier) {
  if (!phone.device().applications().find(bundleIdentifier))
    throw UsageError("no application " + bundleIdentifier + " is installed");
}

namespace {

Action insideApplication(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  const Words request(words.begin() + 1, words.end());
  const RequestKind* kind = findRequest(request[0]);
  if (!kind) throw UsageError("\"" + request[0] + "\" is no request");
  return [identifier = words[0], ask = prepare<Ask>(*kind, asked, request)](Phone& phone) {
    PhoneProcess* application = phone.application(identifier);
    if (!application) throw NotPossible(identifier + " does not run");
    application->run([&] { ask(phone, *application); });
  };
}

constexpr Command inside[] = {
    {"inside", "BUNDLE-ID REQUEST...", "makes any of these requests inside a running application",
     2, programs::anyNumber, insideApplication},
};

}  // namespace

std::array<Table<Ask>, 4> requestKinds() {
  return {applicationRequests(), switchRequests(), featureRequests(), titledRequests()};
}

const RequestKind* findRequest(const std::string& name) {
  for (const auto& table : requestKinds())
    if (const RequestKind* kind = table.find(name)) return kind;
  return nullptr;
}

Action insideHomeScreen(Ask ask) {
  return [ask = std::move(ask)](Phone& phone) {
    phone.homeScreen().run([&] { ask(phone, phone.homeScreen()); });
  };
}

Table<Action> insideCommand() {
  return inside;
}

void askIf(bool isProtected, const Completion& completion, const std::function<void()>& ask) {
  if (isProtected)
    ask();
  else
    completion(/*authenticated=*/false, /*allowed=*/true);
}

std::function<void()> noteOf(Phone& phone, std::string text) {
  return [&phone, text = std::move(text)] { phone.device().journal().record(text); };
}

}  // namespace sentrel::sim
