#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "programs/sentrelctl/Command.h"

namespace sentrel::sentrelctl {

/// The lines of an explanation, in the order in which the library takes its steps.
class Explanation {
 public:
  /// One line: a question and its answer.
  void step(const char* question, const std::string& answer);

  /// The line for what only the home screen could have told.
  void stepUnknown(const char* question);

  /// Whether the system is on, and whether a trusted network is joined.
  void stepsOfActivity();

  /// Whether an open session covers the item.
  void stepOfSession(std::string_view item);

  /// Prints all of it with the verdict, and answers the exit code that says the same.
  programs::ExitCode conclude(const Context& context, bool isProtected) const;

 private:
  void stepOfNetwork();

  std::vector<std::pair<const char*, std::string>> steps_;
};

std::string yesOrNo(bool yes);

/// Whether there is a home-screen process that answers. Asked once.
bool homeScreenAnswers();

/// Explain what is no member of a set: one of the phone's own features, the folder that holds an
/// application, and an application by the folder that it lies in. Each adds its steps and answers
/// the verdict. Throw UsageError for an unknown feature.
bool explainFeature(Explanation& explanation, const std::string& name);
bool explainFolder(Explanation& explanation, const std::string& bundleIdentifier);
bool explainFolderOf(Explanation& explanation, const std::string& bundleIdentifier);

/// What explain knows, for people.
std::string kindsHelp();
std::string featureNames();

/// The names of a table's entries, with a space in front of each.
template <class Table>
std::string namesOf(const Table& table) {
  std::string names;
  for (const auto& entry : table)
    names += " " + std::string(entry.name);
  return names;
}

/// The entry of a table that has the name; throws UsageError with `all` the names there are.
template <class Table>
const auto& named(const Table& table, std::string_view name, const char* what,
                  const std::string& all) {
  for (const auto& entry : table)
    if (entry.name == name) return entry;
  throw programs::UsageError("unknown " + std::string(what) + " " + std::string(name) +
                             "; there are:" + all);
}

}  // namespace sentrel::sentrelctl
