#include "device/screen/Painter.h"

#include <utility>

#include "device/screen/ElementPainters.h"
#include "device/screen/LayerPainter.h"
#include "device/screen/PaintContext.h"
#include "device/screen/Presentation.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::screen {
namespace {

void paintTree(const UIView& view, PaintContext& context);

/// From the superview's coordinates into the view's own.
void enter(const Presentation& shown, cairo_t* cairo) {
  const CGAffineTransform& t = shown.transform;
  const cairo_matrix_t matrix{t.a, t.b, t.c, t.d, t.tx, t.ty};
  cairo_translate(cairo, shown.center.x, shown.center.y);
  cairo_transform(cairo, &matrix);
  cairo_translate(cairo, -shown.bounds.midX(), -shown.bounds.midY());
}

struct Extents {
  double left, top, right, bottom;
};

Extents clipExtents(cairo_t* cairo) {
  Extents e{};
  cairo_clip_extents(cairo, &e.left, &e.top, &e.right, &e.bottom);
  return e;
}

bool isOnScreen(const CGRect& bounds, const Extents& clip) {
  return bounds.origin.x < clip.right && bounds.maxX() > clip.left &&
         bounds.origin.y < clip.bottom && bounds.maxY() > clip.top;
}

void paintSubviews(const UIView& view, PaintContext& context) {
  for (const auto& subview : view.subviews())
    paintTree(*subview, context);
}

void paintContents(const UIView& view, const Presentation& shown, bool seen,
                   PaintContext& context) {
  const SavedState saved(context.cairo);
  if (view.clipsToBounds()) clipToLayer(view.layer(), shown.bounds, context);
  if (seen) {
    paintBackground(view, shown, context);
    paintElement(view, shown.bounds, context);
  }
  if (shown.pushed > 0) {
    clipToLayer(view.layer(), shown.bounds, context);
    cairo_translate(context.cairo, shown.pushed * shown.bounds.size.width, 0);
  }
  paintSubviews(view, context);
}

void paintTree(const UIView& view, PaintContext& context) {
  if (view.isHidden()) return;
  const Presentation shown = presentationOf(view, context.moment);
  if (!shown.isVisible()) return;

  const SavedState saved(context.cairo);
  enter(shown, context.cairo);
  const bool seen = shown.hasArea() && isOnScreen(shown.bounds, clipExtents(context.cairo));
  const bool staysInside = view.clipsToBounds() || view.subviews().empty();
  if (!seen && staysInside) return;

  const Group group(context, shown.alpha * elementOpacity(view));
  paintContents(view, shown, seen, context);
  if (seen) paintBorder(view.layer(), shown.bounds, context);
}

PaintContext contextFor(cairo_t* cairo, const PinnedFonts& fonts, const Canvas& canvas,
                        const Painter::Settings& settings) {
  cairo_scale(cairo, canvas.scale(), canvas.scale());
  return {cairo, fonts, settings.style, settings.glyphKind, settings.moment, canvas.scale()};
}

}  // namespace

Painter::Painter(std::shared_ptr<const PinnedFonts> fonts) : fonts_(std::move(fonts)) {}

void Painter::paint(const UIView& view, Canvas& canvas, const Settings& settings) const {
  const CairoHandle cairo(cairo_create(canvas.surface()));
  PaintContext context = contextFor(cairo.get(), *fonts_, canvas, settings);
  paintTree(view, context);
}

void Painter::paint(const UIApplication& application, Canvas& canvas,
                    const Settings& settings) const {
  const CairoHandle cairo(cairo_create(canvas.surface()));
  PaintContext context = contextFor(cairo.get(), *fonts_, canvas, settings);
  for (const auto& window : application.windows())
    paintTree(*window, context);
}

}  // namespace sentrel::screen
