#import "platform/macos/MacPorts.h"

#import "platform/macos/Bridge.h"

#include <functional>
#include <map>

namespace kelpa {

namespace {

std::optional<StoreValue> textsIn(NSArray* array) {
    std::vector<std::string> all;
    for (id element in array) {
        if (![element isKindOfClass:[NSString class]])
            return std::nullopt;
        all.push_back(toString(element));
    }
    return all;
}

struct Write {
    NSUserDefaults* defaults;
    NSString* name;

    void operator()(bool value) const { [defaults setBool:value forKey:name]; }
    void operator()(std::int64_t value) const { [defaults setInteger:value forKey:name]; }
    void operator()(double value) const { [defaults setDouble:value forKey:name]; }
    void operator()(const std::string& value) const { [defaults setObject:toNSString(value) forKey:name]; }
    void operator()(const std::vector<std::string>& value) const {
        NSMutableArray* all = [NSMutableArray arrayWithCapacity:value.size()];
        for (const std::string& text : value)
            [all addObject:toNSString(text)];
        [defaults setObject:all forKey:name];
    }
};

class UserDefaultsStore final : public DefaultsStore {
  public:
    [[nodiscard]] std::optional<StoreValue> value(std::string_view key) const override {
        id object = [defaults_ objectForKey:name(key)];
        if ([object isKindOfClass:[NSNumber class]])
            return fromNumber<StoreValue>(object);
        if ([object isKindOfClass:[NSString class]])
            return toString(object);
        return [object isKindOfClass:[NSArray class]] ? textsIn(object) : std::nullopt;
    }

    void set(std::string_view key, const StoreValue& value) override {
        std::visit(Write{defaults_, name(key)}, value);
    }

  private:
    NSString* name(std::string_view key) const {
        auto found = names_.find(key);
        if (found == names_.end())
            found = names_.emplace(key, toNSString(key)).first;
        return found->second;
    }

    NSUserDefaults* defaults_ = [NSUserDefaults standardUserDefaults];
    /// The keys as the system wants them: a setting is read once a second, and a new text each time is a
    /// waste.
    mutable std::map<std::string, NSString*, std::less<>> names_;
};

} // namespace

std::unique_ptr<DefaultsStore> makeUserDefaultsStore() {
    return std::make_unique<UserDefaultsStore>();
}

} // namespace kelpa
