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

std::map<std::string, InfoValue> bundleInfo() {
    std::map<std::string, InfoValue> all;
    NSDictionary* infos = [[NSBundle mainBundle] infoDictionary];
    for (NSString* key in infos)
        if (auto value = infoValue([infos objectForKey:key]))
            all.emplace(toString(key), *std::move(value));
    return all;
}

} // namespace

std::string bundleText(const std::string& key) {
    // Without a table of that name, and without an entry in it, the bundle gives the key back.
    return toString([[NSBundle mainBundle] localizedStringForKey:toNSString(key) value:nil table:nil]);
}

std::unique_ptr<Fonts> makeMacFonts() {
    return std::make_unique<MacFonts>();
}

SystemInfo macSystemInfo() {
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    utsname names{};
    uname(&names);
    const NSOperatingSystemVersion version = [[NSProcessInfo processInfo] operatingSystemVersion];
    NSString* home = NSHomeDirectory();
    return {bundleInfo(),
            identifier ? std::optional(toString(identifier)) : std::nullopt,
            names.machine,
            {static_cast<int>(version.majorVersion), static_cast<int>(version.minorVersion),
             static_cast<int>(version.patchVersion)},
            [home length] > 0 ? std::optional(toString(home)) : std::nullopt,
            [NSApp applicationIconImage] ? std::optional(toString(NSImageNameApplicationIcon))
                                         : std::nullopt};
}

} // namespace kelpa
