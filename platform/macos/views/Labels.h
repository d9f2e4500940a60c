#pragma once

#import <AppKit/AppKit.h>

#include <string>

/// A button that runs what it was given.
@interface KelpaActionButton : NSButton
/// `action` runs at a click for as long as the button lives; it must not own the button.
- (void)onClick:(void (^)(void))action;
@end

/// Underlined words in the colour of links that lead elsewhere.
@interface KelpaLinkButton : KelpaActionButton
/// `action` must not own the button.
- (instancetype)initWithFont:(NSFont*)font action:(void (^)(void))action;
- (void)setText:(NSString*)text;
/// Puts one of the system's symbols behind the words.
- (void)setSymbol:(NSString*)name;
@end

namespace kelpa {

/// A text that is only read, on one line, in a colour that follows light and dark.
[[nodiscard]] NSTextField* makeLabel(const std::string& text, NSFont* font = [NSFont systemFontOfSize:0],
                                     NSColor* color = [NSColor labelColor]);
/// The same on as many lines as it needs, centred.
[[nodiscard]] NSTextField* makeCenteredText(const std::string& text, NSFont* font, NSColor* color);
/// How an attributed text looks on a button.
[[nodiscard]] NSDictionary* centredText(NSFont* font, NSColor* color);
/// The system's font for a kind of text, made bold.
[[nodiscard]] NSFont* boldFont(NSFontTextStyle style);
[[nodiscard]] NSFont* textFont(NSFontTextStyle style);
/// A symbol of the system's by its name, as large as letters of `points`.
[[nodiscard]] NSImage* symbolImage(const std::string& name, CGFloat points);

} // namespace kelpa
