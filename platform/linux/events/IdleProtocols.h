#pragma once

#include "platform/linux/display/WaylandConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// Keeps a question to the compositor open.
class IdleNotice {
  public:
    virtual ~IdleNotice() = default;
};

/// One of the protocols by which Wayland compositors tell that nobody has used a seat for a while.
class IdleProtocol {
  public:
    virtual ~IdleProtocol() = default;
    /// The name of what a compositor offers when it speaks the protocol.
    [[nodiscard]] virtual std::string name() const = 0;
    /// Takes the offer; before anything is watched.
    virtual void bind(WaylandConnection& connection, const WaylandGlobal& offer) = 0;
    /// `told` runs with true each time when nobody has used the seat for so long, and with false at the next
    /// use after that. The seat outlives the notice, and the protocol outlives both.
    [[nodiscard]] virtual std::unique_ptr<IdleNotice> watch(wl_seat& seat, std::uint32_t milliseconds,
                                                            std::function<void(bool idle)> told) = 0;
};

/// All that the program speaks, the best first.
[[nodiscard]] std::vector<std::unique_ptr<IdleProtocol>> idleProtocols();

} // namespace kelpa
