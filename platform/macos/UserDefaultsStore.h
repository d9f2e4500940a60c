#pragma once

#import <Foundation/Foundation.h>

#include "platform/ports/DefaultsStore.h"

#include <functional>
#include <map>

namespace kelpa {

/// The per-user defaults of the application.
class UserDefaultsStore final : public DefaultsStore {
  public:
    [[nodiscard]] std::optional<StoreValue> value(std::string_view key) const override;
    void set(std::string_view key, const StoreValue& value) override;

  private:
    NSString* name(std::string_view key) const;

    NSUserDefaults* defaults_ = [NSUserDefaults standardUserDefaults];
    /// The keys as the system wants them: a setting is read once a second, and a new text each time is a
    /// waste.
    mutable std::map<std::string, NSString*, std::less<>> names_;
};

} // namespace kelpa
