#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace sentrel {

/// What came of asking an object that may not be there by an operation that it may not answer:
/// none where nobody answered.
template <class T>
class Answer : public std::optional<T> {
 public:
  using std::optional<T>::optional;

  T orElse(T fallback) const { return this->value_or(std::move(fallback)); }
};

/// Asks `object`, which may be null, by one of its optional operations.
template <class Object, class Class, class Result, class... Parameters, class... Arguments>
Answer<Result> answer(const std::shared_ptr<Object>& object,
                      std::function<Result(Parameters...)> Class::*operation,
                      Arguments&&... arguments) {
  if (!object || !((*object).*operation)) return {};
  return ((*object).*operation)(std::forward<Arguments>(arguments)...);
}

/// The same for an operation without a result. Whether it was answered.
template <class Object, class Class, class... Parameters, class... Arguments>
bool perform(const std::shared_ptr<Object>& object,
             std::function<void(Parameters...)> Class::*operation, Arguments&&... arguments) {
  if (!object || !((*object).*operation)) return false;
  ((*object).*operation)(std::forward<Arguments>(arguments)...);
  return true;
}

}  // namespace sentrel
