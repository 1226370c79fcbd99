#include "session/KorDSMColorNames.h"

#include "services/Prompts.h"

namespace {

// Labels name the first ten colours and those that come from elsewhere.
constexpr int kLabelByLayer = 514;
constexpr int kLabelByBlock = 515;
constexpr int kFirstOfLabels = 515; // the name of colour 1 follows

constexpr int kFirstHue = 300;
constexpr int kFirstTone = 400;
constexpr int kFirstHueColor = 10;
constexpr int kTones = 10; // of each hue
constexpr int kFirstGrey = 250;

KorString worded(int number) {
    return Prompts::getPrompt("COLOR", number);
}

} // namespace

KorString KorDSMColorNames::name(std::int64_t color) {
    if (color < 0 || color > kByLayer)
        return {};
    const int number = static_cast<int>(color);
    if (number == kByLayer || number == 0)
        return Prompts::dsm(number == 0 ? kLabelByBlock : kLabelByLayer);
    if (number < kFirstHueColor)
        return Prompts::dsm(kFirstOfLabels + number);
    if (number >= kFirstGrey)
        return worded(number);
    const int hue = number / kTones - 1;
    return KorString::format(worded(kFirstTone + number % kTones), {worded(kFirstHue + hue)});
}

KorString KorDSMColorNames::text(std::int64_t color) {
    const KorString known = name(color);
    return known.isEmpty() ? KorString::number(color)
                           : KorString::format("%s %s", {KorString::number(color), known});
}

std::optional<int> KorDSMColorNames::parse(const KorString& text) {
    const KorString wanted = text.trimmed().lowered();
    for (int color = 0; !wanted.isEmpty() && color <= kByLayer; ++color)
        if (const KorString known = name(color).lowered();
            wanted == known || wanted == KorString::number(color) + " " + known)
            return color;
    return std::nullopt;
}
