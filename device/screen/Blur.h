#pragma once

#include <cairo.h>

namespace sentrel::screen {

/// Blurs a picture of 32-bit premultiplied pixels in place by a Gaussian of `sigma` pixels. At the
/// edges the outermost pixels go on outwards. Does nothing for a sigma of 0 or less.
///
/// The time is proportional to pixels times sigma: shrink a picture before a wide blur.
void blurGaussian(cairo_surface_t* picture, double sigma);

/// Moves every colour away from its own grey (above 1) or towards it (below 1).
void saturate(cairo_surface_t* picture, double amount);

/// Mixes every colour with white by half of what its grey lacks of white: what is bright stays as
/// it is, and black becomes a middle grey.
void lightenShadows(cairo_surface_t* picture);

}  // namespace sentrel::screen
