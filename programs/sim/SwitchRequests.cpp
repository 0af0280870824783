// Panes of the settings application, and switches of the control centre.

#include <utility>

#include "programs/sim/RequestKinds.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::sim {
namespace {

constexpr const char* settingsApplication = "com.apple.Preferences";

class Pane final : public PSSpecifier {
 public:
  Pane(std::string name, std::string identifier)
      : name_(std::move(name)), identifier_(std::move(identifier)) {}

  std::optional<std::string> name() const override { return name_; }
  std::optional<std::string> identifier() const override { return identifier_; }

 private:
  std::string name_;
  std::string identifier_;
};

void askForPane(const std::shared_ptr<Pane>& pane, const std::optional<std::string>& title,
                const Presenter& presenter, const Completion& completion) {
  askIf(settings().isSpecifierProtected(*pane->name()), completion, [&] {
    if (title)
      controller().requiresAuthenticationForSpecifier(pane, title, presenter, completion);
    else
      controller().requiresAuthenticationForSpecifier(pane, presenter, completion);
  });
}

Ask openPane(Phone&, const Words& words) {
  const auto slash = words[0].find('/');
  if (slash == std::string::npos || slash == 0 || slash + 1 == words[0].size())
    throw UsageError("\"" + words[0] + "\" is not NAME/IDENTIFIER");
  const auto pane = std::make_shared<Pane>(words[0].substr(0, slash), words[0].substr(slash + 1));
  const auto title = words.size() == 2 ? std::optional(words[1]) : std::nullopt;
  return [pane, title](Phone& phone, PhoneProcess&) {
    PhoneProcess* place = phone.application(settingsApplication);
    if (!place) throw NotPossible(std::string(settingsApplication) + " does not run");
    const auto completion = phone.request("open-pane " + *pane->name(),
                                          noteOf(phone, "open the pane " + *pane->name()));
    place->run([&] { askForPane(pane, title, place->presenter(), completion); });
  };
}

Ask flip(Phone&, const Words& words) {
  return [identifier = words[0]](Phone& phone, PhoneProcess& place) {
    const auto completion =
        phone.request("flip " + identifier, noteOf(phone, "flip " + identifier));
    SNUtils::setRequestingFromCC(/*value=*/true);
    askIf(settings().isFlipSwitchProtected(identifier), completion, [&] {
      controller().requiresAuthenticationForFlipSwitch(identifier, place.presenter(), completion);
    });
    SNUtils::setRequestingFromCC(/*value=*/false);
  };
}

constexpr RequestKind kinds[] = {
    {"open-pane", "NAME/IDENTIFIER [TITLE]", "opens a pane of the running settings application", 1,
     2, openPane},
    {"flip", "SWITCH", "flips a switch of the control centre", 1, 1, flip},
};

}  // namespace

Table<Ask> switchRequests() {
  return kinds;
}

}  // namespace sentrel::sim
