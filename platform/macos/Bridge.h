#pragma once

#import <AppKit/AppKit.h>

#include "base/FatalError.h"

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace kelpa {

/// Texts of the core are UTF-8. One that is not (it came from a damaged file) is read byte by byte, so that
/// the user still sees most of it.
[[nodiscard]] inline NSString* toNSString(std::string_view text) {
    NSString* whole = [[NSString alloc] initWithBytes:text.data()
                                               length:text.size()
                                             encoding:NSUTF8StringEncoding];
    if (whole)
        return whole;
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSISOLatin1StringEncoding];
}

/// An absent text reads as empty.
[[nodiscard]] inline std::string toString(NSString* text) {
    const char* characters = [text UTF8String];
    return characters ? std::string(characters) : std::string();
}

/// A number as the core knows it, one of whose kinds `Value` takes. Foundation keeps truth values as numbers,
/// too, of a class of their own.
template <class Value>
[[nodiscard]] Value fromNumber(NSNumber* number) {
    if ([number isKindOfClass:[@(YES) class]])
        return static_cast<bool>([number boolValue]);
    const char type = *[number objCType];
    if (type == *@encode(double) || type == *@encode(float))
        return [number doubleValue];
    return static_cast<std::int64_t>([number longLongValue]);
}

/// Every way from the system's frameworks into the core leads through here: those frameworks are not made for
/// C++ exceptions, so that none may leave it.
template <class Work>
void callCore(const Work& work) noexcept {
    try {
        work();
    } catch (const std::exception& error) {
        fatalError(std::string("An unexpected exception: ") + error.what());
    } catch (...) {
        fatalError("An unexpected exception of an unknown kind");
    }
}

/// The shared application. That there is none is a programming error and ends the process.
[[nodiscard]] inline NSApplication* runningApplication() {
    if (!NSApp)
        fatalError("There is no application");
    return NSApp;
}

} // namespace kelpa
