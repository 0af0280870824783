#include "host/WatchResponder.h"

#include "sentrel/watch/WatchMessages.h"
#include "sentrel/watch/WatchProtocol.h"

namespace sentrel::host {

void WatchResponder::operator()(const std::shared_ptr<XpcMessage>& message) const {
  const bool* mark = find<bool>(message->content(), watch::eventKey);
  if (!mark || !*mark) return;
  const Signal signal = signal_();
  handleSNWatchEvent(message, signal.first, signal.second);
}

}  // namespace sentrel::host
