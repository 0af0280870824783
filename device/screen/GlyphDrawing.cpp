#include "device/screen/GlyphDrawing.h"

#include <array>
#include <cmath>
#include <numbers>

namespace sentrel::screen {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double middle = glyphSide / 2;

UIColor successColor() {
  return UIColor::colorWithRed(0.2, 0.72, 0.35, 1);
}
UIColor failureColor() {
  return UIColor::colorWithRed(0.92, 0.26, 0.24, 1);
}

void stroke(cairo_t* cairo, double width) {
  cairo_set_line_width(cairo, width);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cairo);
}

/// One ridge: an arch from one side to the other, and how far each end runs down from it. An end
/// bends inwards the more, the longer it is.
struct Ridge {
  double radius;
  double leftEnd;
  double rightEnd;
  /// Radians left out of the arch on either side, from the horizontal up; an end that is cut off
  /// does not run down.
  double leftCut = 0;
  double rightCut = 0;
};

constexpr double archCenter = 29;

constexpr std::array ridges = {Ridge{3.4, 13, 20}, Ridge{8.6, 21, 11}, Ridge{13.8, 9, 20},
                               Ridge{19.0, 19, 14}, Ridge{24.2, 7, 0, 0, 0.5}};

void leg(cairo_t* cairo, double side, const Ridge& ridge, double length) {
  const double x = middle + side * ridge.radius;
  const double bend = side * length * 0.012 * ridge.radius;
  cairo_curve_to(cairo, x, archCenter + length * 0.4, x - bend * 0.3, archCenter + length * 0.7,
                 x - bend, archCenter + length);
}

void addRidge(cairo_t* cairo, const Ridge& ridge) {
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, middle, archCenter, ridge.radius, pi + ridge.leftCut, -ridge.rightCut);
  if (ridge.rightCut == 0) leg(cairo, 1, ridge, ridge.rightEnd);
  if (ridge.leftCut != 0) return;
  cairo_move_to(cairo, middle - ridge.radius, archCenter);
  leg(cairo, -1, ridge, ridge.leftEnd);
}

void drawFinger(cairo_t* cairo) {
  cairo_new_path(cairo);
  for (const Ridge& ridge : ridges)
    addRidge(cairo, ridge);
  stroke(cairo, 2.4);
}

/// The corners of a finder's frame.
void drawFrame(cairo_t* cairo) {
  constexpr double inset = 7;
  constexpr double radius = 10;
  constexpr double arm = 4;
  cairo_new_path(cairo);
  for (int corner = 0; corner < 4; ++corner) {
    const SavedState saved(cairo);
    cairo_translate(cairo, middle, middle);
    cairo_rotate(cairo, corner * pi / 2);
    cairo_translate(cairo, -middle, -middle);
    cairo_move_to(cairo, inset, inset + radius + arm);
    cairo_arc(cairo, inset + radius, inset + radius, radius, pi, 1.5 * pi);
    cairo_line_to(cairo, inset + radius + arm, inset);
  }
  stroke(cairo, 2.6);
}

void drawFace(cairo_t* cairo) {
  drawFrame(cairo);
  for (const double side : {-1.0, 1.0}) {
    cairo_move_to(cairo, middle + side * 8.5, 24);
    cairo_line_to(cairo, middle + side * 8.5, 28);
  }
  cairo_move_to(cairo, middle + 0.5, 25);
  cairo_curve_to(cairo, middle + 0.5, 34, middle + 1, 35, middle - 2.5, 35);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, middle, 33, 11.5, 0.25 * pi, 0.75 * pi);
  stroke(cairo, 2.6);
}

void drawBase(GlyphKind kind, cairo_t* cairo) {
  kind == GlyphKind::face ? drawFace(cairo) : drawFinger(cairo);
}

/// The part of the glyph that the sensor has seen so far, from the bottom up.
void drawLit(GlyphKind kind, double drawn, PaintContext& context) {
  const SavedState saved(context.cairo);
  const double top = glyphSide * (1 - 0.62 * drawn);
  cairo_rectangle(context.cairo, 0, top, glyphSide, glyphSide - top);
  cairo_clip(context.cairo);
  context.setSource(UIColor::systemBlueColor());
  drawBase(kind, context.cairo);
}

void drawScanning(GlyphKind kind, const UIColor& color, double drawn, PaintContext& context) {
  context.setSource(color, 0.45);
  drawBase(kind, context.cairo);
  drawLit(kind, drawn, context);
}

/// A ring with a tick in it that grows from its short end.
void drawTick(double drawn, PaintContext& context) {
  cairo_t* cairo = context.cairo;
  context.setSource(successColor());
  cairo_new_path(cairo);
  cairo_arc(cairo, middle, middle, 25, -pi / 2, -pi / 2 + 2 * pi * drawn);
  stroke(cairo, 2.6);
  constexpr double length = 33;
  const double shown[] = {length * drawn, length};
  const SavedState saved(cairo);
  cairo_set_dash(cairo, shown, 2, 0);
  cairo_move_to(cairo, 21, 33);
  cairo_line_to(cairo, 29, 41);
  cairo_line_to(cairo, 43.5, 24);
  if (drawn > 0) stroke(cairo, 3.6);
}

/// The glyph steps back behind a badge with a cross.
void drawFailure(GlyphKind kind, const UIColor& color, double drawn, PaintContext& context) {
  cairo_t* cairo = context.cairo;
  context.setSource(color, 1 - 0.6 * drawn);
  drawBase(kind, cairo);
  if (!(drawn > 0)) return;
  const SavedState saved(cairo);
  cairo_translate(cairo, 49, 49);
  cairo_scale(cairo, drawn, drawn);
  cairo_new_path(cairo);
  cairo_arc(cairo, 0, 0, 11, 0, 2 * pi);
  context.setSource(failureColor());
  cairo_fill(cairo);
  for (const double side : {-1.0, 1.0}) {
    cairo_move_to(cairo, -4 * side, -4);
    cairo_line_to(cairo, 4 * side, 4);
  }
  context.setSource(UIColor::whiteColor());
  stroke(cairo, 2.6);
}

}  // namespace

void drawGlyph(GlyphLook look, GlyphKind kind, const UIColor& color, double drawn,
               PaintContext& context) {
  switch (look) {
    case GlyphLook::idle:
      context.setSource(color);
      return drawBase(kind, context.cairo);
    case GlyphLook::scanning:
      return drawScanning(kind, color, drawn, context);
    case GlyphLook::success:
      return drawTick(drawn, context);
    case GlyphLook::failure:
      return drawFailure(kind, color, drawn, context);
  }
}

}  // namespace sentrel::screen
