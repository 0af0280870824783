#include "device/storage/SpareDescriptor.h"

#include <fcntl.h>

namespace sentrel::storage {

SpareDescriptor& SpareDescriptor::ofProcess() {
  static SpareDescriptor spare;
  return spare;
}

void SpareDescriptor::take() {
  file_.emplace(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

SpareDescriptor::Loan::Loan(SpareDescriptor& spare) : spare_(spare), alone_(spare.mutex_) {
  spare_.file_.reset();
}

/// Where it cannot be had back, the next loan tries again.
SpareDescriptor::Loan::~Loan() {
  spare_.take();
}

}  // namespace sentrel::storage
