#include "device/real/RealPlatform.h"

#include <utility>

#include "device/real/RealParts.h"
#include "device/screen/PangoTextMeasuring.h"

namespace sentrel::real {
namespace {

class UntranslatedBundle final : public MainBundle {
 public:
  explicit UntranslatedBundle(std::string identifier) : identifier_(std::move(identifier)) {}

  const std::string& bundleIdentifier() const override { return identifier_; }
  std::string_view localizedString(std::string_view key) const override { return key; }

 private:
  std::string identifier_;
};

class KnownSystem final : public SystemFacts {
 public:
  explicit KnownSystem(std::string version) : version_(std::move(version)) {}

  std::string systemVersion() const override { return version_; }

 private:
  std::string version_;
};

class KnownScreen final : public Screen {
 public:
  explicit KnownScreen(const RealScreen& screen) : screen_(screen) {}

  CGRect bounds() const override { return {{0, 0}, screen_.size}; }
  double scale() const override { return screen_.scale; }
  std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() const override { return screen_.idiom; }
  std::optional<UIUserInterfaceStyle> userInterfaceStyle() const override { return screen_.style; }

 private:
  RealScreen screen_;
};

std::shared_ptr<bus::BusConnection> connect(const std::shared_ptr<loop::RunLoop>& loop,
                                            const RealPlatformOptions& options) {
  bus::BusConnection::Options wanted;
  if (!options.busAddress.empty()) {
    wanted.address = options.busAddress;
    wanted.onLost = options.onBusLost;
  }
  return std::make_shared<bus::BusConnection>(loop, std::move(wanted));
}

}  // namespace

RealPlatform::RealPlatform(const RealPlatformOptions& options)
    : loop_(std::make_shared<loop::RunLoop>()), connection_(connect(loop_, options)) {
  addRealParts(platform_, options.root, loop_, connection_);
  platform_.mainBundle = std::make_shared<UntranslatedBundle>(options.bundleIdentifier);
  platform_.system = std::make_shared<KnownSystem>(options.systemVersion);
  if (options.screen) addScreen(*options.screen);
}

void RealPlatform::addScreen(const RealScreen& screen) {
  fonts_ = std::make_shared<const screen::PinnedFonts>();
  platform_.screen = std::make_shared<KnownScreen>(screen);
  platform_.textMeasuring = std::make_shared<screen::PangoTextMeasuring>(fonts_);
  platform_.glyphViewClass = std::make_shared<const PKGlyphViewClass>();
}

}  // namespace sentrel::real
