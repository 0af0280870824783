#include "device/screen/Png.h"

#include <stdexcept>

namespace sentrel::screen {

void writePng(const Canvas& canvas, const std::string& path) {
  const cairo_status_t status = cairo_surface_write_to_png(canvas.surface(), path.c_str());
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error("cannot write the picture " + path + ": " +
                           cairo_status_to_string(status));
}

}  // namespace sentrel::screen
