#include "programs/gallery/Gallery.h"
#include "programs/gallery/Stage.h"
#include "sentrel/authui/SNFakeCallIDView.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::gallery {
namespace {

/// The cover where a call's caller is shown, on the call's blurred background.
void paintCover(Gallery& gallery, const StageOptions& options, const std::string& name) {
  Stage stage(gallery.fonts(), options);
  stage.process().run([&] {
    const CGSize screen = options.device.size;
    const auto call =
        std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2), CGRect{{}, screen});
    stage.homeWindow()->addSubview(call);
    const auto cover = std::make_shared<SNFakeCallIDView>(CGRectMake(0, 60, screen.width, 110));
    call->contentView()->setFrame(call->bounds());
    call->contentView()->addSubview(cover);
    cover->updateData();
  });
  gallery.add("caller-" + name + describe(options), stage.picture());
}

}  // namespace

void paintCallerCovers(Gallery& gallery) {
  for (const DeviceKind& device : {phone, smallPhone, tablet})
    for (const auto style : {UIUserInterfaceStyle::light, UIUserInterfaceStyle::dark})
      paintCover(gallery, {.device = device, .style = style}, "");
}

}  // namespace sentrel::gallery
