#include "programs/sim/Script.h"

#include <utility>

#include "programs/sim/Command.h"
#include "programs/sim/RequestKinds.h"

namespace sentrel::sim {
namespace {

using Run = decltype(Step::run);

/// Where the help on a command begins.
constexpr std::size_t helpColumn = 42;

Action prepareAction(Phone& phone, const Words& words) {
  if (const RequestKind* kind = findRequest(words[0]))
    return insideHomeScreen(prepare<Ask>(*kind, phone, words));
  for (const auto& table : {insideCommand(), userCommands(), deviceCommands(), settingsCommands(),
                            passcodeScreenCommands()})
    if (const Command* command = table.find(words[0]))
      return prepare<Action>(*command, phone, words);
  throw UsageError("unknown command \"" + words[0] + "\"");
}

Run prepareCommand(Phone& phone, const Words& words) {
  return [action = prepareAction(phone, words)](Phone& it) {
    action(it);
    it.settle();
    return std::optional<std::string>();
  };
}

std::string joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) {
    const bool needsQuotes = word.empty() || word.find(' ') != std::string::npos;
    text += (text.empty() ? "" : " ") + (needsQuotes ? "\"" + word + "\"" : word);
  }
  return text;
}

/// `words` are what follows "expect".
Run prepareExpectation(Phone& phone, Words words) {
  const std::string whole = joined(words);
  const bool isNegated = !words.empty() && words[0] == "no";
  if (isNegated) words.erase(words.begin());
  if (words.empty()) throw UsageError("expected: expect [no] WHAT...");
  const Expectation* expectation = expectations().find(words[0]);
  if (!expectation) expectation = passcodeScreenExpectations().find(words[0]);
  if (!expectation) throw UsageError("nobody can expect \"" + words[0] + "\"");
  return [whole, isNegated, check = prepare<Check>(*expectation, phone, words)](
             Phone& it) -> std::optional<std::string> {
    const Verdict verdict = check(it);
    if (verdict.isMet != isNegated) return std::nullopt;
    return "expected " + whole + ", seen " + verdict.seen;
  };
}

/// Takes one word off `rest`, which does not begin with a space.
std::string takeWord(std::string_view& rest) {
  std::string word;
  bool isQuoted = false;
  for (; !rest.empty() && (isQuoted || (rest[0] != ' ' && rest[0] != '\t'));
       rest.remove_prefix(1)) {
    if (rest[0] == '"') {
      isQuoted = !isQuoted;
      continue;
    }
    if (isQuoted && rest[0] == '\\' && rest.size() > 1) rest.remove_prefix(1);
    word += rest[0];
  }
  if (isQuoted) throw UsageError("the quotes do not end");
  return word;
}

/// The words of a line, parted by spaces. Between double quotes spaces belong to the word, and so
/// does what stands behind a backslash; from a # at the beginning of a word to the end is a
/// comment. Throws UsageError for quotes that do not end.
Words splitLine(std::string_view rest) {
  Words words;
  if (rest.ends_with('\r')) rest.remove_suffix(1);
  for (;;) {
    const auto begin = rest.find_first_not_of(" \t");
    if (begin == std::string_view::npos || rest[begin] == '#') return words;
    rest.remove_prefix(begin);
    words.push_back(takeWord(rest));
  }
}

}  // namespace

std::optional<Step> prepareStep(Phone& phone, int line, const std::string& text) {
  const Words words = splitLine(text);
  if (words.empty()) return std::nullopt;
  const bool isExpectation = words[0] == "expect";
  return Step{line, joined(words),
              isExpectation ? prepareExpectation(phone, Words(words.begin() + 1, words.end()))
                            : prepareCommand(phone, words)};
}

Script readScript(Phone& phone, std::istream& input) {
  Script script;
  int number = 0;
  for (std::string line; std::getline(input, line);) {
    ++number;
    try {
      if (auto step = prepareStep(phone, number, line)) script.steps.push_back(std::move(*step));
    } catch (const UsageError& error) {
      script.complaints.push_back({number, error.what()});
    }
  }
  return script;
}

std::string languageHelp() {
  std::string requests;
  for (const auto& table : requestKinds())
    requests += table.help(helpColumn);
  return "requests:\n" + requests + insideCommand().help(helpColumn) + "\nthe user:\n" +
         userCommands().help(helpColumn) + "\nthe phone:\n" + deviceCommands().help(helpColumn) +
         "\nthe settings:\n" + settingsCommands().help(helpColumn) + "\nexpectations:\n" +
         expectations().help(helpColumn, "expect [no] ") + "\nthe passcode screen:\n" +
         passcodeScreenCommands().help(helpColumn) +
         passcodeScreenExpectations().help(helpColumn, "expect [no] ");
}

}  // namespace sentrel::sim
