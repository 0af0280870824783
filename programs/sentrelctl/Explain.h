#pragma once

#include <string>
#include <string_view>

#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"

namespace sentrel::sentrelctl {

// The lines of an explanation, in the order in which the library takes its steps.

/// One line: a question and its answer.
void step(const char* question, const std::string& answer);

/// The line for what only the home screen could have told.
void stepUnknown(const char* question);

std::string yesOrNo(bool yes);

/// Whether there is a home-screen process that answers. Asked once for an explanation.
bool homeScreenAnswers();

/// Whether the system is on, and whether a trusted network is joined.
void explainActivity();

/// Whether an open session covers the item.
void explainSession(std::string_view item);

/// The last line, and the exit code that says the same.
programs::ExitCode conclude(bool isProtected);

/// Explain what is no member of a set: one of the phone's own features, the folder that holds an
/// application, and an application by the folder that it lies in. Throw UsageError for an unknown
/// feature.
programs::ExitCode explainFeature(const std::string& name);
programs::ExitCode explainFolder(const std::string& bundleIdentifier);
programs::ExitCode explainFolderOf(const std::string& bundleIdentifier);

/// The entry of a table that has the name; throws UsageError with all names there are, `others`
/// first.
template <class Table>
const auto& named(const Table& table, std::string_view name, const char* what,
                  std::string others = {}) {
  for (const auto& entry : table) {
    if (entry.name == name) return entry;
    others += " " + std::string(entry.name);
  }
  throw programs::UsageError("unknown " + std::string(what) + " " + std::string(name) +
                             "; there are:" + others);
}

}  // namespace sentrel::sentrelctl
