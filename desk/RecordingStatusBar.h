#pragma once

#include "desk/Journal.h"
#include "platform/ports/StatusBar.h"

#include <string_view>
#include <vector>

namespace kelpa::desk {

/// A status bar that notes titles and the lines that change, and that a script clicks.
class RecordingStatusBar final : public StatusBar {
  public:
    explicit RecordingStatusBar(Journal& journal) : journal_(journal) {}

    void lineInserted(std::size_t index, const MenuLine& line) override;
    void lineRemoved(int lineId) override;
    void lineChanged(const MenuLine& line) override;
    void createItem(const std::string& image, MenuClicks& clicks) override;
    void setTitle(const std::string& title) override;

    /// Clicks a line by its name in scripts ("pause", "water", "settings", …); false where the menu has no
    /// such line or it is disabled.
    bool click(std::string_view name);
    [[nodiscard]] static bool knows(std::string_view name);
    [[nodiscard]] const std::vector<MenuLine>& lines() const { return lines_; }
    [[nodiscard]] const std::string& title() const { return title_; }

  private:
    Journal& journal_;
    MenuClicks* clicks_ = nullptr;
    std::vector<MenuLine> lines_;
    std::string title_;
};

} // namespace kelpa::desk
