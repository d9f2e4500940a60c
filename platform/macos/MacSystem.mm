#import "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>

#import "platform/macos/Bridge.h"

#include <cmath>
#include <sys/utsname.h>

namespace kelpa {

namespace {

/// Owns a font of Core Graphics; those are not under ARC.
class GraphicsFont {
  public:
    explicit GraphicsFont(NSData* data) {
        CGDataProviderRef provider = CGDataProviderCreateWithCFData((__bridge CFDataRef)data);
        font_ = provider ? CGFontCreateWithDataProvider(provider) : nullptr;
        CGDataProviderRelease(provider);
    }
    ~GraphicsFont() { CGFontRelease(font_); }
    GraphicsFont(const GraphicsFont&) = delete;
    GraphicsFont& operator=(const GraphicsFont&) = delete;
    [[nodiscard]] CGFontRef get() const { return font_; }

  private:
    CGFontRef font_ = nullptr;
};

NSBitmapImageRep* emptyBitmap(NSInteger pixels) {
    return [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                   pixelsWide:pixels
                                                   pixelsHigh:pixels
                                                bitsPerSample:8
                                              samplesPerPixel:4
                                                     hasAlpha:YES
                                                     isPlanar:NO
                                               colorSpaceName:NSDeviceRGBColorSpace
                                                  bytesPerRow:0
                                                 bitsPerPixel:32];
}

void drawInto(NSBitmapImageRep* bitmap, NSAttributedString* text) {
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:[NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap]];
    [text drawAtPoint:NSZeroPoint];
    [NSGraphicsContext restoreGraphicsState];
}

/// The bitmap keeps red, green, blue and alpha as bytes in this order, colours already multiplied.
GlyphImage imageOf(NSBitmapImageRep* bitmap) {
    const auto size = static_cast<int>([bitmap pixelsWide]);
    GlyphImage image{size, size, {}};
    for (int y = 0; y < size; ++y) {
        const unsigned char* byte = [bitmap bitmapData] + y * [bitmap bytesPerRow];
        for (int x = 0; x < size; ++x, byte += 4)
            image.pixels.push_back(static_cast<std::uint32_t>(byte[3]) << 24 | byte[0] << 16 | byte[1] << 8 |
                                   byte[2]);
    }
    return image;
}

/// The texts, numbers and truth values of an information dictionary; the core has no use for anything else in
/// it.
std::optional<InfoValue> infoValue(id value) {
    if ([value isKindOfClass:[NSString class]])
        return InfoValue(toString(value));
    if (![value isKindOfClass:[NSNumber class]])
        return std::nullopt;
    return fromNumber<InfoValue>(value);
}

class BundleTranslations final : public Translations {
  public:
    [[nodiscard]] std::string lookUp(const std::string& key) const override {
        // Without a table of that name, and without an entry in it, the bundle gives the key back.
        return toString([[NSBundle mainBundle] localizedStringForKey:toNSString(key) value:nil table:nil]);
    }
};

class MacFonts final : public Fonts {
  public:
    [[nodiscard]] std::optional<std::vector<unsigned char>>
    fontAsset(const std::string& name) const override {
        NSURL* file = [[NSBundle mainBundle] URLForResource:toNSString(name) withExtension:@"ttf"];
        NSData* data = file ? [NSData dataWithContentsOfURL:file] : nil;
        if (!data || !GraphicsFont(data).get())
            return std::nullopt;
        const auto* bytes = static_cast<const unsigned char*>([data bytes]);
        return std::vector<unsigned char>(bytes, bytes + [data length]);
    }

    std::optional<std::string> registerFont(const std::vector<unsigned char>& font) override {
        const GraphicsFont graphicsFont([NSData dataWithBytes:font.data() length:font.size()]);
        if (!graphicsFont.get())
            return "no font can be made of it";
        CFErrorRef error = nullptr;
        if (CTFontManagerRegisterGraphicsFont(graphicsFont.get(), &error))
            return std::nullopt;
        NSError* owned = CFBridgingRelease(error);
        return toString([owned localizedDescription]);
    }

    std::optional<GlyphImage> drawGlyph(const std::string& text, const std::string& fontName,
                                        double size) override {
        NSFont* font = [NSFont fontWithName:toNSString(fontName) size:size];
        NSBitmapImageRep* bitmap = emptyBitmap(std::lround(std::ceil(size)));
        if (!font || !bitmap)
            return std::nullopt;
        drawInto(bitmap, [[NSAttributedString alloc] initWithString:toNSString(text)
                                                         attributes:@{NSFontAttributeName : font}]);
        return imageOf(bitmap);
    }
};

class MacSystemInfo final : public SystemInfo {
  public:
    [[nodiscard]] std::map<std::string, InfoValue> bundleInfo() const override {
        std::map<std::string, InfoValue> all;
        NSDictionary* infos = [[NSBundle mainBundle] infoDictionary];
        for (NSString* key in infos)
            if (auto value = infoValue([infos objectForKey:key]))
                all.emplace(toString(key), *std::move(value));
        return all;
    }

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override {
        NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
        return identifier ? std::optional(toString(identifier)) : std::nullopt;
    }

    [[nodiscard]] std::string machine() const override {
        utsname names{};
        uname(&names);
        return names.machine;
    }

    Version osVersion() const override {
        const NSOperatingSystemVersion version = [[NSProcessInfo processInfo] operatingSystemVersion];
        return {static_cast<int>(version.majorVersion), static_cast<int>(version.minorVersion),
                static_cast<int>(version.patchVersion)};
    }

    [[nodiscard]] std::optional<std::string> homeDirectory() const override {
        NSString* home = NSHomeDirectory();
        return [home length] > 0 ? std::optional(toString(home)) : std::nullopt;
    }

    [[nodiscard]] std::optional<std::string> applicationIcon() const override {
        return [NSApp applicationIconImage] ? std::optional(toString(NSImageNameApplicationIcon))
                                            : std::nullopt;
    }
};

} // namespace

std::unique_ptr<Translations> makeMacTranslations() {
    return std::make_unique<BundleTranslations>();
}

std::unique_ptr<Fonts> makeMacFonts() {
    return std::make_unique<MacFonts>();
}

std::unique_ptr<SystemInfo> makeMacSystemInfo() {
    return std::make_unique<MacSystemInfo>();
}

} // namespace kelpa
