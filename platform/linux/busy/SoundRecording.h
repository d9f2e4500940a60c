#pragma once

#include "platform/linux/busy/CommandOutput.h"
#include "platform/linux/busy/DesktopBusyness.h"

#include <set>
#include <string>
#include <string_view>

namespace kelpa {

/// The numbers of the sources from which programs record at this moment, by what `pactl list source-outputs`
/// prints in English: neither streams that are held still, nor those of the sound server's own modules, nor
/// level meters. Whatever else is in the text is passed over.
[[nodiscard]] std::set<std::string> recordedSources(std::string_view streams);
/// The numbers of the sources that are no monitors of what is played, by `pactl list sources`.
[[nodiscard]] std::set<std::string> realSources(std::string_view sources);

/// Whether a program records sound from what is no monitor of the loudspeakers, as PulseAudio tells of it, or
/// PipeWire in its place.
class SoundRecording final : public BusySource {
  public:
    /// The loop outlives the object.
    explicit SoundRecording(EventLoop& loop) : commands_(loop) {}

    Subscription ask(Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable() override;

  private:
    CommandOutput commands_;
};

} // namespace kelpa
