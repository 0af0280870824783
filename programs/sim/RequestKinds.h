#pragma once

#include <array>
#include <functional>
#include <string>

#include "programs/sim/Command.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sim {

// What the user does that may need authentication. Where a request tests nothing itself, the
// hooking side asks the settings first and goes on at once where nothing is protected.

/// A request made inside `place`.
using Ask = std::function<void(Phone& phone, PhoneProcess& place)>;
using RequestKind = programs::Command<Preparing<Ask>>;

// The requests, a table a subject.
Table<Ask> applicationRequests();
Table<Ask> switchRequests();
Table<Ask> featureRequests();
Table<Ask> titledRequests();

/// All of them.
std::array<Table<Ask>, 4> requestKinds();

/// Null for a name that is no request's.
const RequestKind* findRequest(const std::string& name);

Action insideHomeScreen(Ask ask);

/// "inside": any request, made inside an application.
Table<Action> insideCommand();

// --- For the tables ------------------------------------------------------------------------------

using Completion = SentrelController::Completion;
using Presenter = SentrelController::Presenter;

inline SentrelController& controller() {
  return SentrelController::sharedInstance();
}

inline const SNSettings& settings() {
  return SNSettings::sharedSettings();
}

/// Has `ask` ask, or lets the caller go on where nothing is protected.
void askIf(bool isProtected, const Completion& completion, const std::function<void()>& ask);

/// What is done once it is allowed, for the record.
std::function<void()> noteOf(Phone& phone, std::string text);

}  // namespace sentrel::sim
