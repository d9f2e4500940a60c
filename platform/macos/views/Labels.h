#pragma once

#import <AppKit/AppKit.h>

#include <string>

/// Underlined words in the colour of links that lead elsewhere.
@interface KelpaLinkButton : NSButton
/// `action` must not own the button.
- (instancetype)initWithFont:(NSFont*)font action:(void (^)(void))action;
- (void)setText:(NSString*)text;
/// Puts one of the system's symbols behind the words.
- (void)setSymbol:(NSString*)name;
@end

namespace kelpa {

/// A text that is only read, on one line, in a colour that follows light and dark.
[[nodiscard]] NSTextField* makeLabel(const std::string& text, NSFont* font, NSColor* color);
/// The same on as many lines as it needs, centred.
[[nodiscard]] NSTextField* makeCenteredText(const std::string& text, NSFont* font, NSColor* color);
/// The system's font for a kind of text, made bold.
[[nodiscard]] NSFont* boldFont(NSFontTextStyle style);
[[nodiscard]] NSFont* textFont(NSFontTextStyle style);
/// A symbol of the system's by its name, as large as letters of `points`.
[[nodiscard]] NSImage* symbolImage(const std::string& name, CGFloat points);

} // namespace kelpa
