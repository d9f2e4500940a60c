#pragma once

namespace kelpa {

/// What others must know of the program's own windows: what is done in them is not done at work.
class OwnWindows {
  public:
    virtual ~OwnWindows() = default;
    /// Break windows are on every screen, and none of them is on its way out.
    [[nodiscard]] virtual bool coverEveryScreen() const = 0;
    [[nodiscard]] virtual bool anyVisible() const = 0;
    /// Real time since a person last used one of them, as far as the view can tell: only on a display server
    /// that says nothing better, and to a fifth of a second. Infinite when nobody did.
    [[nodiscard]] virtual double secondsSinceInput() const = 0;
    /// Process id of the program that shows them; 0 when none runs.
    [[nodiscard]] virtual int viewPid() const = 0;
};

} // namespace kelpa
