#include "sentrel/platform/SecretText.h"

namespace sentrel {

void wipe(std::string& text) noexcept {
  // The whole buffer: a text that became shorter may have left its end behind.
  text.resize(text.capacity());
  volatile char* bytes = text.data();
  for (std::size_t at = 0; at < text.size(); ++at)
    bytes[at] = '\0';
  text.clear();
}

}  // namespace sentrel
