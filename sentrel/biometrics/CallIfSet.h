#pragma once

namespace sentrel {

/// Calls a block, or an operation, where there is one. It is a copy that is called: what is called
/// may replace or clear the original.
template <class Function, class... Arguments>
void callIfSet(Function function, const Arguments&... arguments) {
  if (function) function(arguments...);
}

}  // namespace sentrel
