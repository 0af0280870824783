#pragma once

#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel {

/// Sends the request `Message` to the home-screen process, logs the reply where the table of
/// messages says so, and reads it. Blocks as the message channel does.
///
/// The home-screen process itself gets no reply: it would have to answer with what it is computing
/// when it asks, without end.
template <class Message>
typename Message::Reply ask(const typename Message::Argument& argument = {}) {
  const UserInfo reply = SNUtils::isSpringBoard()
                             ? UserInfo()
                             : SNUtils::sendMessageToSpringBoardAndReceiveReplyName(
                                   Message::name, encodeArgument(argument));
  if constexpr (Message::label.find("%@") != Message::label.rfind("%@"))
    SNUtils::logMessage(Message::label, argument, reply);
  else if constexpr (!Message::label.empty())
    SNUtils::logMessage(Message::label, reply);
  return decodeReply<typename Message::Reply>(reply);
}

}  // namespace sentrel
