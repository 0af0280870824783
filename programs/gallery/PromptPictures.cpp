#include "programs/gallery/Gallery.h"
#include "programs/gallery/Prompt.h"

namespace sentrel::gallery {
namespace {

constexpr const char* title = "Letters";
constexpr const char* fingerprintMessage = "Scan your fingerprint to continue";
constexpr const char* faceMessage = "Look at the screen to continue";

const char* messageFor(const StageOptions& options) {
  return options.sensor == screen::GlyphKind::face ? faceMessage : fingerprintMessage;
}

std::string prefix(const StageOptions& options) {
  return options.legacyAlerts ? "legacy-prompt-" : "prompt-";
}

void paintGlyphMode(Gallery& gallery, const StageOptions& options) {
  Stage stage(gallery.fonts(), options);
  const Prompt prompt(stage, title, messageFor(options));
  gallery.add(prefix(options) + "glyph-" + describe(options), stage.picture());
}

void paintPasscodeMode(Gallery& gallery, const StageOptions& options) {
  Stage stage(gallery.fonts(), options);
  Prompt prompt(stage, title, messageFor(options));
  prompt.typePasscode("123");
  gallery.add(prefix(options) + "passcode-" + describe(options), stage.picture());
}

}  // namespace

void paintPrompts(Gallery& gallery) {
  for (const DeviceKind& device : {phone, smallPhone, tablet})
    for (const auto style : {UIUserInterfaceStyle::light, UIUserInterfaceStyle::dark})
      for (const bool legacyAlerts : {false, true}) {
        const StageOptions options{.device = device, .style = style, .legacyAlerts = legacyAlerts};
        paintGlyphMode(gallery, options);
        paintPasscodeMode(gallery, options);
      }
}

// --- Glyphs --------------------------------------------------------------------------------------

namespace {

struct GlyphPicture {
  const char* name;
  std::int64_t fingerprintState;
  std::int64_t faceState;
};

constexpr GlyphPicture glyphPictures[] = {
    {"idle", 0, 2}, {"scanning", 3, 4}, {"success", 12, 12}, {"failure", 10, 1}};

void paintGlyph(Gallery& gallery, const StageOptions& options, const GlyphPicture& picture,
                Seconds shownFor, const std::string& name) {
  Stage stage(gallery.fonts(), options);
  Prompt prompt(stage, title, messageFor(options));
  const bool isFace = options.sensor == screen::GlyphKind::face;
  stage.process().run([&] {
    prompt.content().animateFingerPrintActions(
        isFace ? picture.faceState : picture.fingerprintState, /*animated=*/true, {});
  });
  stage.wait(shownFor);
  gallery.add(
      "glyph-" + std::string(isFace ? "face-" : "fingerprint-") + name + "-" + describe(options),
      stage.picture());
}

}  // namespace

void paintGlyphs(Gallery& gallery) {
  for (const auto sensor : {screen::GlyphKind::fingerprint, screen::GlyphKind::face})
    for (const auto style : {UIUserInterfaceStyle::light, UIUserInterfaceStyle::dark}) {
      const StageOptions options{.style = style, .sensor = sensor};
      for (const GlyphPicture& picture : glyphPictures)
        paintGlyph(gallery, options, picture, Seconds(2), picture.name);
      paintGlyph(gallery, options, glyphPictures[2], Seconds(0.2), "on-its-way");
    }
}

// --- Passcode row --------------------------------------------------------------------------------

namespace {

void paintRow(Gallery& gallery, const StageOptions& options, const std::string& digits) {
  Stage stage(gallery.fonts(), options);
  Prompt prompt(stage, title, fingerprintMessage);
  prompt.typePasscode(digits);
  gallery.add("passcode-" + std::to_string(digits.size()) + "-of-6-" + describe(options),
              stage.picture());
}

void paintRowShake(Gallery& gallery, const StageOptions& options) {
  Stage stage(gallery.fonts(), options);
  Prompt prompt(stage, title, fingerprintMessage);
  prompt.typePasscode("123456");
  stage.process().run([&] { prompt.content().passcodeView()->_denyAccess(); });
  stage.wait(Seconds(0.09));
  gallery.add("passcode-row-in-its-shake-" + describe(options), stage.picture());
}

void paintAlertShake(Gallery& gallery, const StageOptions& options) {
  Stage stage(gallery.fonts(), options);
  Prompt prompt(stage, title, fingerprintMessage);
  stage.process().run([&] {
    prompt.content().animateFingerPrintActions(10, /*animated=*/false, {});
    UIView& alert = prompt.alertView();
    alert.setTransform(CGAffineTransform::makeTranslation(30, 0));
    UIView::animateWithDuration(Seconds(0.4), Seconds(0), /*usingSpringWithDamping=*/0.2,
                                /*initialSpringVelocity=*/1.0,
                                [&] { alert.setTransform(CGAffineTransform()); });
  });
  stage.wait(Seconds(0.03));
  gallery.add("prompt-in-its-shake-" + describe(options), stage.picture());
}

}  // namespace

void paintPasscodes(Gallery& gallery) {
  for (std::size_t count = 0; count <= 6; ++count)
    paintRow(gallery, {}, std::string(count, '7'));
  paintRow(gallery, {.style = UIUserInterfaceStyle::dark}, "777777");
  for (const bool legacyAlerts : {false, true}) {
    if (!legacyAlerts) paintRowShake(gallery, {});
    if (!legacyAlerts) paintAlertShake(gallery, {});
  }
}

// --- Texts ---------------------------------------------------------------------------------------

namespace {

struct PromptText {
  const char* name;
  const char* title;
  const char* message;
  const char* switchButton;
  const char* cancel;
};

constexpr PromptText promptTexts[] = {
    {"long-title",
     "The Complete Illustrated Household Ledger and Recipe Collection, Third Revised Edition",
     "Scan your fingerprint to continue", "Enter Passcode", "Cancel"},
    {"german", "Kontoübersicht und Überweisungen",
     "Zum Fortfahren legen Sie bitte Ihren Finger auf den Fingerabdrucksensor oder geben Sie den "
     "Sicherheitscode ein",
     "Sicherheitscode stattdessen eingeben", "Vorgang abbrechen"},
    {"hebrew", "מכתבים", "סרקו את טביעת האצבע כדי להמשיך", "הזנת קוד", "ביטול"},
    {"arabic", "الرسائل", "امسح بصمة إصبعك للمتابعة", "إدخال الرمز", "إلغاء"},
    {"russian", "Письма и документы", "Приложите палец к датчику, чтобы продолжить",
     "Ввести код-пароль", "Отменить"},
    {"combining", "Z̤̈a̱l̊g̃ȯ́ café", "é ñ ü Å: e\u0301 n\u0303 u\u0308 A\u030A", "Enter Passcode",
     "Cancel"},
    {"no-utf-8", "Bad \xFF\xC3( bytes", "\xE2\x82 is half a character", "Enter Passcode", "Cancel"},
    {"empty", "", "", "Enter Passcode", "Cancel"},
};

void paintText(Gallery& gallery, const StageOptions& options, const PromptText& text) {
  Stage stage(gallery.fonts(), options);
  stage.process().mainBundle().translate("Enter Passcode", text.switchButton);
  stage.process().mainBundle().translate("Cancel", text.cancel);
  const Prompt prompt(stage, text.title, text.message);
  gallery.add((options.legacyAlerts ? "legacy-text-" : "text-") + std::string(text.name) + "-" +
                  describe(options),
              stage.picture());
}

}  // namespace

void paintPromptTexts(Gallery& gallery) {
  for (const PromptText& text : promptTexts)
    paintText(gallery, {}, text);
  paintText(gallery, {.device = smallPhone}, promptTexts[1]);
  paintText(gallery, {.legacyAlerts = true}, promptTexts[0]);
}

}  // namespace sentrel::gallery
