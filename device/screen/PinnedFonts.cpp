#include "device/screen/PinnedFonts.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace sentrel::screen {
namespace {

constexpr const char* family = "Inter";

constexpr std::array faces = {"Inter-Regular.otf", "Inter-Bold.otf", "Inter-Italic.otf",
                              "Inter-BoldItalic.otf"};
constexpr std::array otherScriptsFaces = {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf"};

/// Sends every request, fallbacks for single characters included, to the pinned families: to the
/// main one first, unless it asks for the other.
constexpr const char* configurationText = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="pattern">
    <test name="family" qual="first" compare="not_eq"><string>DejaVu Sans</string></test>
    <edit name="family" mode="assign" binding="strong"><string>Inter</string>
      <string>DejaVu Sans</string></edit>
  </match>
</fontconfig>)";

using ConfigurationHandle = std::unique_ptr<FcConfig, Releasing<FcConfigDestroy>>;
using FontMapHandle = std::unique_ptr<PangoFontMap, Releasing<g_object_unref>>;
using FontOptionsHandle =
    std::unique_ptr<cairo_font_options_t, Releasing<cairo_font_options_destroy>>;

const FcChar8* bytes(const char* text) {
  return reinterpret_cast<const FcChar8*>(text);
}

void addFace(FcConfig* configuration, const std::string& path) {
  if (FcConfigAppFontAddFile(configuration, bytes(path.c_str()))) return;
  throw std::runtime_error("cannot load the font file " + path +
                           ": install the packages fonts-inter and fonts-dejavu-core, or name "
                           "other folders when configuring the build");
}

/// The files are added one by one, so that no folder is scanned and no cache read or written.
ConfigurationHandle makeConfiguration(const PinnedFonts::Folders& folders) {
  ConfigurationHandle made(FcConfigCreate());
  if (!FcConfigParseAndLoadFromMemory(made.get(), bytes(configurationText), FcTrue))
    throw std::runtime_error("the font configuration could not be loaded");
  for (const char* face : faces)
    addFace(made.get(), folders.main + "/" + face);
  for (const char* face : otherScriptsFaces)
    addFace(made.get(), folders.otherScripts + "/" + face);
  return made;
}

FontMapHandle makeFontMap(const PinnedFonts::Folders& folders) {
  FontMapHandle map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
  if (!map) throw std::runtime_error("this build of Cairo has no FreeType fonts");
  pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map.get()), makeConfiguration(folders).get());
  pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(map.get()), 72);
  return map;
}

FontOptionsHandle makeOptions() {
  FontOptionsHandle options(cairo_font_options_create());
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  return options;
}

}  // namespace

PinnedFonts::PinnedFonts(const Folders& folders) {
  const FontMapHandle map = makeFontMap(folders);
  context_.reset(pango_font_map_create_context(map.get()));
  pango_cairo_context_set_font_options(context_.get(), makeOptions().get());
  pango_context_set_round_glyph_positions(context_.get(), FALSE);
  // Else the machine's locale would choose the shapes of some letters.
  pango_context_set_language(context_.get(), pango_language_from_string("en"));
}

PinnedFonts::~PinnedFonts() = default;

PinnedFonts::Folders PinnedFonts::defaultFolders() {
  return {SENTREL_FONT_FOLDER, SENTREL_OTHER_SCRIPTS_FONT_FOLDER};
}

FontDescriptionHandle PinnedFonts::describe(const Font& font) {
  FontDescriptionHandle made(pango_font_description_new());
  const double size = std::isfinite(font.size) ? std::clamp(font.size, 1.0, 2000.0) : 1.0;
  pango_font_description_set_family_static(made.get(), family);
  pango_font_description_set_weight(made.get(),
                                    font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(made.get(),
                                   font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(made.get(), size * PANGO_SCALE);
  return made;
}

}  // namespace sentrel::screen
