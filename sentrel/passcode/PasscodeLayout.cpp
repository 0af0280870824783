#include "sentrel/passcode/PasscodeLayout.h"

#include <algorithm>

namespace sentrel {
namespace {

constexpr double margin = 12;
/// Free above and below the column, if it can be had.
constexpr double breathingSpace = 6;
constexpr double widestOverlay = 520;

/// `size` around `middle` of a screen of that width.
CGRect centered(CGSize size, double screenWidth, double middle) {
  return CGRectMake((screenWidth - size.width) / 2, middle - size.height / 2, size.width,
                    size.height);
}

void placeBoxes(const PasscodeContent& content, double wantedGap, double middle,
                PasscodePlaces& places) {
  const double room = content.screen.width - 2 * margin;
  const double gap = std::min(wantedGap, room / std::max(content.boxes, 1));
  places.boxScale = wantedGap > 0 ? gap / wantedGap : 1;
  for (int at = 0; at < content.boxes; ++at)
    places.boxCenters.push_back(
        {content.screen.width / 2 + (at - (content.boxes - 1) / 2.0) * gap, middle});
}

}  // namespace

double passcodeTextWidth(double screenWidth) {
  return std::max(screenWidth - 2 * margin, 0.0);
}

PasscodePlaces placePasscode(const PasscodeContent& content, const PasscodeAppearance& appearance) {
  const double room = content.screen.height - content.top - content.bottom;
  const double fixed = content.prompt.height + content.failure.height / 2;
  const double wanted = appearance.failedAttemptLabelGap;
  const double squeeze = std::clamp((room - fixed - 2 * breathingSpace) / wanted, 0.5, 1.0);
  const double columnTop = content.top + std::max((room - fixed - wanted * squeeze) / 2, 0.0) +
                           appearance.verticalOffset;
  const double promptBottom = columnTop + content.prompt.height;
  const double entryMiddle = promptBottom + appearance.verticalGap * squeeze;

  const double width = content.screen.width;
  PasscodePlaces places;
  places.prompt = centered(content.prompt, width, columnTop + content.prompt.height / 2);
  places.failure = centered(content.failure, width, promptBottom + wanted * squeeze);
  // The information stands where a failure would, and below one that is there.
  const double infoMiddle = content.hasFailure
                                ? places.failure.maxY() + content.info.height
                                : promptBottom + appearance.modifierForBottomVerticalGap *
                                                     appearance.verticalGap * squeeze;
  places.info = centered(content.info, width, infoMiddle);
  places.overlay =
      centered({std::min(width - 2 * margin, widestOverlay), appearance.passcodeOverlayHeight},
               width, entryMiddle);
  if (content.isSimple) placeBoxes(content, appearance.horizontalGap, entryMiddle, places);
  return places;
}

}  // namespace sentrel
