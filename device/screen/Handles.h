#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <memory>

namespace sentrel::screen {

/// Releases what a C library counts references of.
template <auto Release>
struct Releasing {
  template <class T>
  void operator()(T* object) const {
    Release(object);
  }
};

using SurfaceHandle = std::unique_ptr<cairo_surface_t, Releasing<cairo_surface_destroy>>;
using CairoHandle = std::unique_ptr<cairo_t, Releasing<cairo_destroy>>;
using PatternHandle = std::unique_ptr<cairo_pattern_t, Releasing<cairo_pattern_destroy>>;
using PangoContextHandle = std::unique_ptr<PangoContext, Releasing<g_object_unref>>;
using PangoLayoutHandle = std::unique_ptr<PangoLayout, Releasing<g_object_unref>>;
using FontDescriptionHandle =
    std::unique_ptr<PangoFontDescription, Releasing<pango_font_description_free>>;

/// What was drawn with the context until the end of the scope leaves its state as it was.
class SavedState {
 public:
  explicit SavedState(cairo_t* cairo) : cairo_(cairo) { cairo_save(cairo_); }
  ~SavedState() { cairo_restore(cairo_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

 private:
  cairo_t* cairo_;
};

}  // namespace sentrel::screen
