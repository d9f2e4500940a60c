#pragma once

#include "platform/ports/WindowSystem.h"

#include <optional>
#include <vector>

namespace kelpa {

/// Where a panel stands: in the top right corner of its screen, flush and without margin, unless a person
/// dragged it; then there, as long as no less of it is on the screens than was when it was dropped. What was
/// dragged is kept also while its screen is away.
class PanelPlace {
  public:
    struct Place {
        std::uint32_t screen;
        Rect frame;
    };

    explicit PanelPlace(const Size& size) : size_(size) {}

    /// A person dropped the panel there. A frame beside all screens is no place.
    void dropped(const Rect& frame, const std::vector<Screen>& screens);
    /// `home` is the screen that the panel belongs to unless it was dragged.
    [[nodiscard]] Place on(const std::vector<Screen>& screens, const Screen& home) const;

  private:
    /// Kept with the screen, because that can move on the desktop.
    struct Drop {
        std::uint32_t screen;
        double right; ///< from the screen's left edge to the panel's
        double down;  ///< from the screen's upper edge to the panel's
        double seen;  ///< how much of the panel the screens showed, in square points
    };
    [[nodiscard]] Rect dragged(const Drop& drop, const Rect& screen) const;
    [[nodiscard]] Rect corner(const Rect& screen) const;

    Size size_;
    std::optional<Drop> drop_;
};

} // namespace kelpa
