#include "ui/IconFont.h"

#include "base/FatalError.h"

namespace kelpa {

namespace {

Fonts* registry = nullptr;
bool isRegistered = false;

Fonts& fonts() {
    if (!registry)
        fatalError("The icon font was used before the program was set up");
    return *registry;
}

void registerOnce(const std::string& name) {
    if (isRegistered)
        return;
    const auto asset = fonts().fontAsset(name);
    if (!asset)
        fatalError("Can not found font named: " + name);
    if (const auto error = fonts().registerFont(*asset))
        fatalError("Register Iconfont failed: " + *error);
    isRegistered = true;
}

} // namespace

const IconFont IconFont::kelpa{"\uE64B"};
const IconFont IconFont::kelpagun{"\uE64C"};

std::optional<IconFont> IconFont::fromRawValue(std::string_view rawValue) {
    for (const IconFont& icon : {kelpa, kelpagun})
        if (icon.rawValue_ == rawValue)
            return icon;
    return std::nullopt;
}

void IconFont::wire(Fonts& fonts) {
    registry = &fonts;
}

const std::string& IconFont::name() {
    static const std::string fontName = "iconfont";
    registerOnce(fontName);
    return fontName;
}

GlyphView IconFont::view(double size) const {
    return {rawValue_, name(), size};
}

std::optional<GlyphImage> IconFont::loadIcon(double size) const {
    return fonts().drawGlyph(rawValue_, name(), size);
}

} // namespace kelpa
