// Anything with a title.

#include "programs/sim/RequestKinds.h"

namespace sentrel::sim {
namespace {

Ask showItem(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthenticationForItem(words[0], words[1], place.presenter(),
                                               phone.request("item " + words[0], {}));
  };
}

Ask showTitled(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthentication(words[0], words[1], place.presenter(),
                                        phone.request("titled " + words[0], {}));
  };
}

Ask showOverAll(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess&) {
    controller().requiresAuthentication(words[0], words[1],
                                        phone.request("over-all " + words[0], {}));
  };
}

constexpr RequestKind kinds[] = {
    {"item", "TITLE MESSAGE", "asks for anything; no session is recorded", 2, 2, showItem},
    {"titled", "TITLE MESSAGE", "asks for anything, remembered by its title", 2, 2, showTitled},
    {"over-all", "TITLE MESSAGE", "the same, over whatever is on the screen", 2, 2, showOverAll},
};

}  // namespace

Table<Ask> titledRequests() {
  return kinds;
}

}  // namespace sentrel::sim
