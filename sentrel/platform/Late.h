#pragma once

#include <functional>
#include <memory>

namespace sentrel {

/// A shared instance that is made when it is first asked for, handed to whoever may never need it.
template <class T>
using Late = std::function<std::shared_ptr<T>()>;

}  // namespace sentrel
