#pragma once

#include "sentrel/bridge/Bridge.h"

namespace sentrel {

/// Asks the home-screen process on behalf of the current one, as Bridge::ask() does.
template <class Message>
typename Message::Reply ask(const typename Message::Argument& argument = {}) {
  return Bridge::sharedBridge().ask<Message>(argument);
}

}  // namespace sentrel
