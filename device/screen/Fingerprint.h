#pragma once

#include <cstddef>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel::screen {

/// A number that changes when anything changes that the painter would show, animations apart. Says
/// nothing about the texts that went into it.
std::size_t fingerprintOf(const UIApplication& application);

/// Whether an animation runs in a visible window, or waits for its start.
bool isAnimating(const UIApplication& application);

}  // namespace sentrel::screen
