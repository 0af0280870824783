#pragma once

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/MessageCoding.h"

namespace sentrel {

/// Sends the request `Message` to the home-screen process, logs the reply where the table of
/// messages says so, and reads it. Blocks as the message channel does.
///
/// The home-screen process itself gets no reply: it would have to answer with what it is computing
/// when it asks, without end.
template <class Message>
typename Message::Reply ask(Bridge& bridge, const typename Message::Argument& argument = {}) {
  const UserInfo reply = bridge.isSpringBoard()
                             ? UserInfo()
                             : bridge.sendMessageToSpringBoardAndReceiveReplyName(
                                   Message::name, encodeArgument(argument));
  if constexpr (Message::label.find("%@") != Message::label.rfind("%@"))
    bridge.logMessage(Message::label, argument, reply);
  else if constexpr (!Message::label.empty())
    bridge.logMessage(Message::label, reply);
  return decodeReply<typename Message::Reply>(reply);
}

}  // namespace sentrel
