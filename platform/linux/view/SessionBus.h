#pragma once

namespace kelpa {

/// A session bus that stands still must not keep a break away: the toolkit asks it, and what tells there of
/// screen readers, before anything is shown, and waits for half a minute. Without an answer within a second
/// this process goes without the bus. To be called before the toolkit is there.
void avoidSilentBus();

} // namespace kelpa
