#pragma once

namespace kelpa {

/// Whether input counts as activity at all at this moment: not while the screen is locked, and not while
/// break windows cover every screen, because then all of it goes to the program itself.
class ActivityGate {
  public:
    virtual ~ActivityGate() = default;
    [[nodiscard]] virtual bool open() const = 0;
};

} // namespace kelpa
