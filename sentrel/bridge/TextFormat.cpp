#include "sentrel/bridge/TextFormat.h"

namespace sentrel {
namespace {

/// The length of the directive at the start of `text`, or 0 when there is none.
std::size_t directiveLength(std::string_view text) {
  for (std::string_view directive : {"%@", "%d", "%i", "%u", "%ld", "%li", "%lu"})
    if (text.starts_with(directive)) return directive.size();
  return 0;
}

}  // namespace

std::string formatText(std::string_view format, std::initializer_list<TextArgument> arguments) {
  std::string text;
  auto argument = arguments.begin();
  while (!format.empty()) {
    const std::size_t directive = directiveLength(format);
    if (directive > 0 && argument != arguments.end()) {
      text += (argument++)->text();
      format.remove_prefix(directive);
    } else {
      text += format.front();
      format.remove_prefix(format.starts_with("%%") ? 2 : 1);
    }
  }
  return text;
}

}  // namespace sentrel
