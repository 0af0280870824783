#pragma once

#include <memory>
#include <string>

#include "device/screen/Handles.h"
#include "sentrel/platform/Font.h"

namespace sentrel::screen {

/// The faces that every text is measured and drawn with, whatever the machine has installed or
/// configured: four files of the Inter family (regular, bold and their italics), and DejaVu Sans
/// for scripts that Inter lacks, Arabic and Hebrew among them. Characters that neither has show as
/// boxes. Laid out without hinting, a point to a pixel: the same text gives the same picture on
/// every machine.
///
/// For one thread; make another for another. Not to be used in a child after a fork.
class PinnedFonts {
 public:
  /// The family for scripts that the main one lacks.
  static constexpr const char* otherScriptsFamily = "DejaVu Sans";

  /// Where the font files are.
  struct Folders {
    std::string main;
    std::string otherScripts;
  };

  /// Loads the faces. Throws std::runtime_error, which says what is missing and what to install,
  /// when one cannot be loaded.
  explicit PinnedFonts(const Folders& folders = defaultFolders());
  ~PinnedFonts();
  PinnedFonts(const PinnedFonts&) = delete;
  PinnedFonts& operator=(const PinnedFonts&) = delete;

  /// Where the build expects the font files.
  static Folders defaultFolders();

  /// What new text layouts are made from. Lives as long as the fonts.
  PangoContext* context() const noexcept { return context_.get(); }

  /// The pinned face for `font`. Every name, known or not, is the one family; what counts is size,
  /// weight and slant. Sizes from 1 to 2000 points; others are drawn at the nearest of them.
  static FontDescriptionHandle describe(const Font& font);

 private:
  PangoContextHandle context_;
};

}  // namespace sentrel::screen
