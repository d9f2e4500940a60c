#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/WindowSystem.h"

namespace kelpa {

/// The screens and windows of the session.
class MacWindowSystem final : public WindowSystem {
  public:
    MacWindowSystem() = default;
    ~MacWindowSystem() override;
    MacWindowSystem(const MacWindowSystem&) = delete;
    MacWindowSystem& operator=(const MacWindowSystem&) = delete;

    void setClient(WindowSystemClient& client) override;
    [[nodiscard]] std::vector<Screen> screens() const override;
    [[nodiscard]] const Screen* mainScreen() const override;
    std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) override;
    /// Nothing takes long to load here.
    void prepare() override {}
    void activate() override;
    void deactivate() override;

  private:
    WindowSystemClient* client_ = nullptr;
    id<NSObject> screenWatch_ = nil;
    mutable Screen main_; ///< what `mainScreen` answered last
};

} // namespace kelpa
