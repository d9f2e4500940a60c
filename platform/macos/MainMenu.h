#pragma once

#import <AppKit/AppKit.h>

namespace kelpa {

/// The application's main menu. An application without a place in the Dock never shows it, so that its lines
/// have no titles; it is there for the key equivalents of text fields and windows, and because the list of
/// windows needs a menu to be kept in.
void installMainMenu();

} // namespace kelpa
