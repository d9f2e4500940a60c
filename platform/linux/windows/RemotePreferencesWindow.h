#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/ports/PreferencesWindow.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// The preferences window as the view shows it. What its controls show is kept by the core alone, which says
/// it again to each view; it goes to the window there, and comes from it, past the window here.
class RemotePreferencesWindow final : public PreferencesWindow, private wire::Addressee {
  public:
    /// The window system outlives the window.
    explicit RemotePreferencesWindow(RemoteWindowSystem& windows) : windows_(windows) {}

    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override;
    void show() override;
    void show(const std::string& id, PreferencesField field, const PreferencesValue& value) override;

  private:
    void hear(const wire::Message& message) override;

    /// A text of a control of which the view shows the beginning, which then stands for all of it.
    struct Cut {
        std::string id;
        std::string shown;
        std::string whole;
    };
    /// The texts as far as the view shows them: of long ones the beginning, and never twice the same for
    /// different ones.
    [[nodiscard]] std::vector<PreferencesEntry> shorten(const std::string& id,
                                                        std::vector<PreferencesEntry> entries);
    /// The whole text of which a control shows this.
    [[nodiscard]] std::string whole(const std::string& id, const std::string& shown) const;

    void didAct(const std::string& action, const std::string& value);
    void didToControl(const wire::Message& message) const;
    [[nodiscard]] std::optional<PreferencesValue> valueIn(const wire::Message& message) const;

    RemoteWindowSystem& windows_;
    PreferencesClient* client_ = nullptr;
    std::vector<Cut> cuts_;                ///< hardly ever any
    std::unique_ptr<RemoteWindow> window_; ///< null until the window is laid out
};

} // namespace kelpa
