#include "ui/IconFont.h"

#include "base/FatalError.h"

namespace kelpa {

namespace {

Wired<Fonts*> fonts("The icon font was");
bool isRegistered = false;

void registerOnce(const std::string& name) {
    if (isRegistered)
        return;
    const auto asset = (*fonts)->fontAsset(name);
    if (!asset)
        fatalError("Can not found font named: " + name);
    if (const auto error = (*fonts)->registerFont(*asset))
        fatalError("Register Iconfont failed: " + *error);
    isRegistered = true;
}

} // namespace

const IconFont IconFont::kelpa{"\uE64B"};
const IconFont IconFont::kelpagun{"\uE64C"};

void IconFont::wire(Fonts& registry) {
    fonts.wire(&registry);
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
    return (*fonts)->drawGlyph(rawValue_, name(), size);
}

} // namespace kelpa
