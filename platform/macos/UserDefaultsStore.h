#pragma once

#import <Foundation/Foundation.h>

#include "platform/ports/DefaultsStore.h"

#include <functional>
#include <map>

namespace kelpa {

/// The per-user defaults of the application.
class UserDefaultsStore final : public DefaultsStore {
  public:
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override;
    [[nodiscard]] std::optional<double> real(std::string_view key) const override;
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override;
    [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const override;

    void setBoolean(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setReal(std::string_view key, double value) override;
    void setText(std::string_view key, const std::string& value) override;
    void setTexts(std::string_view key, const std::vector<std::string>& value) override;

  private:
    NSString* name(std::string_view key) const;
    id object(std::string_view key) const;

    NSUserDefaults* defaults_ = [NSUserDefaults standardUserDefaults];
    /// The keys as the system wants them: a setting is read once a second, and a new text each time is a
    /// waste.
    mutable std::map<std::string, NSString*, std::less<>> names_;
};

} // namespace kelpa
