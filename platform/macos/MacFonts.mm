#import "platform/macos/MacFonts.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>
#import <CoreText/CoreText.h>

#import "platform/macos/Bridge.h"

#include <cmath>

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

} // namespace

std::optional<std::vector<unsigned char>> MacFonts::fontAsset(const std::string& name) const {
    NSURL* file = [[NSBundle mainBundle] URLForResource:toNSString(name) withExtension:@"ttf"];
    NSData* data = file ? [NSData dataWithContentsOfURL:file] : nil;
    if (!data || !GraphicsFont(data).get())
        return std::nullopt;
    const auto* bytes = static_cast<const unsigned char*>([data bytes]);
    return std::vector<unsigned char>(bytes, bytes + [data length]);
}

std::optional<std::string> MacFonts::registerFont(const std::vector<unsigned char>& font) {
    const GraphicsFont graphicsFont([NSData dataWithBytes:font.data() length:font.size()]);
    if (!graphicsFont.get())
        return "no font can be made of it";
    CFErrorRef error = nullptr;
    if (CTFontManagerRegisterGraphicsFont(graphicsFont.get(), &error))
        return std::nullopt;
    NSError* owned = CFBridgingRelease(error);
    return toString([owned localizedDescription]);
}

std::optional<GlyphImage> MacFonts::drawGlyph(const std::string& text, const std::string& fontName,
                                              double size) {
    NSFont* font = [NSFont fontWithName:toNSString(fontName) size:size];
    NSBitmapImageRep* bitmap = emptyBitmap(std::lround(std::ceil(size)));
    if (!font || !bitmap)
        return std::nullopt;
    drawInto(bitmap, [[NSAttributedString alloc] initWithString:toNSString(text)
                                                     attributes:@{NSFontAttributeName : font}]);
    return imageOf(bitmap);
}

} // namespace kelpa
