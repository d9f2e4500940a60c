#import "platform/macos/UserDefaultsStore.h"

#import "platform/macos/Bridge.h"

#import <CoreFoundation/CoreFoundation.h>

namespace kelpa {

namespace {

/// A stored number; nil for every other value, a truth value among them, which Foundation keeps as a number
/// too.
NSNumber* numberOf(id object) {
    if (![object isKindOfClass:[NSNumber class]])
        return nil;
    return CFGetTypeID((__bridge CFTypeRef)object) == CFBooleanGetTypeID() ? nil : object;
}

bool isReal(NSNumber* number) {
    return CFNumberIsFloatType((__bridge CFNumberRef)number);
}

} // namespace

NSString* UserDefaultsStore::name(std::string_view key) const {
    auto found = names_.find(key);
    if (found == names_.end())
        found = names_.emplace(key, toNSString(key)).first;
    return found->second;
}

id UserDefaultsStore::object(std::string_view key) const {
    return [defaults_ objectForKey:name(key)];
}

std::optional<bool> UserDefaultsStore::boolean(std::string_view key) const {
    id value = object(key);
    if (!value || CFGetTypeID((__bridge CFTypeRef)value) != CFBooleanGetTypeID())
        return std::nullopt;
    return static_cast<bool>([value boolValue]);
}

std::optional<std::int64_t> UserDefaultsStore::integer(std::string_view key) const {
    NSNumber* number = numberOf(object(key));
    if (!number || isReal(number))
        return std::nullopt;
    return [number longLongValue];
}

std::optional<double> UserDefaultsStore::real(std::string_view key) const {
    NSNumber* number = numberOf(object(key));
    if (!number || !isReal(number))
        return std::nullopt;
    return [number doubleValue];
}

std::optional<std::string> UserDefaultsStore::text(std::string_view key) const {
    id value = object(key);
    if (![value isKindOfClass:[NSString class]])
        return std::nullopt;
    return toString(value);
}

std::optional<std::vector<std::string>> UserDefaultsStore::texts(std::string_view key) const {
    id value = object(key);
    if (![value isKindOfClass:[NSArray class]])
        return std::nullopt;
    std::vector<std::string> all;
    for (id element in static_cast<NSArray*>(value)) {
        if (![element isKindOfClass:[NSString class]])
            return std::nullopt;
        all.push_back(toString(element));
    }
    return all;
}

void UserDefaultsStore::setBoolean(std::string_view key, bool value) {
    [defaults_ setBool:value forKey:name(key)];
}

void UserDefaultsStore::setInteger(std::string_view key, std::int64_t value) {
    [defaults_ setInteger:value forKey:name(key)];
}

void UserDefaultsStore::setReal(std::string_view key, double value) {
    [defaults_ setDouble:value forKey:name(key)];
}

void UserDefaultsStore::setText(std::string_view key, const std::string& value) {
    [defaults_ setObject:toNSString(value) forKey:name(key)];
}

void UserDefaultsStore::setTexts(std::string_view key, const std::vector<std::string>& value) {
    NSMutableArray* all = [NSMutableArray arrayWithCapacity:value.size()];
    for (const std::string& text : value)
        [all addObject:toNSString(text)];
    [defaults_ setObject:all forKey:name(key)];
}

} // namespace kelpa
