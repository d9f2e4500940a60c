#pragma once

#include "platform/ports/WindowSystem.h"

namespace kelpa {

/// The screens and windows of the session.
class MacWindowSystem final : public WindowSystem {
  public:
    /// `client` must outlive the process's last change of the screens.
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
    mutable Screen main_; ///< what `mainScreen` answered last
};

} // namespace kelpa
