#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include "programs/common/CommandTable.h"
#include "programs/sim/Arguments.h"
#include "programs/sim/Phone.h"

namespace sentrel::sim {

/// Something that the user cannot do as things stand on the phone.
class NotPossible : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What makes something that can be run later of the words behind a name. It throws UsageError for
/// words that make no sense on this phone, and runs nothing.
template <class Prepared>
using Preparing = Prepared(Phone& phone, const Words& arguments);

template <class Prepared>
using Table = programs::CommandTable<Preparing<Prepared>>;

using Action = std::function<void(Phone& phone)>;
using Command = programs::Command<Preparing<Action>>;

// The commands, a table a subject.
Table<Action> userCommands();
Table<Action> deviceCommands();
Table<Action> settingsCommands();
Table<Action> passcodeScreenCommands();

/// What an expectation found.
struct Verdict {
  bool isMet;
  /// What there is instead.
  std::string seen;
};

using Check = std::function<Verdict(Phone& phone)>;
using Expectation = programs::Command<Preparing<Check>>;

/// What may follow "expect", or "expect no".
Table<Check> expectations();
Table<Check> passcodeScreenExpectations();

/// `words` are the command's name and its arguments.
template <class Prepared>
Prepared prepare(const programs::Command<Preparing<Prepared>>& command, Phone& phone,
                 const Words& words) {
  const Words arguments(words.begin() + 1, words.end());
  if (!command.takes(arguments.size())) throw UsageError("expected: " + command.call());
  return command.run(phone, arguments);
}

/// Throws UsageError for an application that the phone does not have.
void requireInstalled(Phone& phone, const std::string& bundleIdentifier);

}  // namespace sentrel::sim
