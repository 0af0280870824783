#include "programs/common/HomeScreenItems.h"
#include "programs/gallery/Gallery.h"
#include "programs/gallery/Stage.h"
#include "sentrel/effects/ProtectionOverlay.h"

namespace sentrel::gallery {
namespace {

constexpr std::int64_t extraLightStyle = 0;

struct OverlayPicture {
  const char* name;
  std::int64_t style;
  const char* message;
  /// Titles of the actions; the first has the icon.
  std::vector<const char*> actions;
  bool hasIcon = false;
};

const std::vector<OverlayPicture>& overlayPictures() {
  static const std::vector<OverlayPicture> pictures = {
      {"message", overlayLightStyle, "This album is protected", {}},
      {"message-dark-style", overlayDarkStyle, "This album is protected", {}},
      {"message-extra-light-style", extraLightStyle, "This album is protected", {}},
      {"icon-and-caption", overlayLightStyle, "Protected by Sentrel", {"Album+Unlock"}, true},
      {"icon-and-caption-dark-style",
       overlayDarkStyle,
       "Protected by Sentrel",
       {"Album+Unlock"},
       true},
      {"icon-without-caption", overlayLightStyle, "Protected by Sentrel", {"Unlock"}, true},
      {"buttons", overlayLightStyle, "Choose how to go on", {"Open", "Later", "Not today"}},
      {"several-plus", overlayLightStyle, "Two parts count", {"Album+Winter+Open"}, true},
      {"long-message",
       overlayLightStyle,
       "This album is protected; unlock it with your fingerprint, your face or your passcode to "
       "see "
       "the pictures inside",
       {"Album+Unlock"},
       true},
      {"hebrew", overlayLightStyle, "האלבום הזה מוגן", {"אלבום+פתיחה"}, true},
  };
  return pictures;
}

UIAlertActions makeActions(const OverlayPicture& picture) {
  UIAlertActions actions;
  for (const char* title : picture.actions)
    actions.push_back(UIAlertAction::actionWithTitle(title, UIAlertActionStyle::standard, {}));
  if (picture.hasIcon) actions.front()->setImage(programs::makeIconImage(1));
  return actions;
}

/// The whole screen, covered.
void paintOverlay(Gallery& gallery, const StageOptions& options, const OverlayPicture& picture) {
  Stage stage(gallery.fonts(), options);
  stage.process().run([&] {
    sn__applyBlurEffects(*stage.homeWindow(), picture.style, picture.message, makeActions(picture));
  });
  gallery.add("overlay-" + std::string(picture.name) + "-" + describe(options), stage.picture());
}

/// A small view on the home screen, covered.
void paintCard(Gallery& gallery, std::int64_t style, const std::string& name) {
  Stage stage(gallery.fonts(), {});
  stage.process().run([&] {
    const auto card = std::make_shared<UIView>(CGRectMake(30, 100, 315, 220));
    card->layer().setCornerRadius(24);
    stage.homeWindow()->addSubview(card);
    sn__applyBlurEffects(*card, style, "Protected", {});
  });
  gallery.add("overlay-" + name + "-phone-light", stage.picture());
}

}  // namespace

void paintOverlays(Gallery& gallery) {
  for (const OverlayPicture& picture : overlayPictures())
    paintOverlay(gallery, {}, picture);
  const OverlayPicture& withIcon = overlayPictures()[3];
  constexpr auto dark = UIUserInterfaceStyle::dark;
  paintOverlay(gallery, {.device = phone, .style = dark}, withIcon);
  paintOverlay(gallery, {.device = smallPhone, .sensor = screen::GlyphKind::face}, withIcon);
  paintOverlay(gallery, {.device = smallPhone, .style = dark}, withIcon);
  paintOverlay(gallery, {.device = tablet}, withIcon);
  paintOverlay(gallery, {.device = tablet, .style = dark}, withIcon);
  paintCard(gallery, overlayLightStyle, "on-a-rounded-view");
  paintCard(gallery, overlayDarkStyle, "on-a-rounded-view-dark-style");
}

}  // namespace sentrel::gallery
