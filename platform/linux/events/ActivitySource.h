#pragma once

#include <string>

namespace kelpa {

/// Told by a source of activity, always from the main loop.
class ActivitySink {
  public:
    virtual ~ActivitySink() = default;
    /// Somebody uses the mouse or a modifier key, or any key where these cannot be told apart. While that
    /// goes on a source tells of it once a second of the program's time at most, and its last word comes
    /// within that second of the last event.
    virtual void happened() = 0;
    /// A source that was asking found that it can watch.
    virtual void watching() = 0;
    /// A source that was asking found that this desktop has no such thing. It is not used again.
    virtual void absent() = 0;
    /// The source cannot watch, or cannot any more; `why` goes into the log. It is not used again.
    virtual void failed(const std::string& why) = 0;
};

/// One way in which a desktop tells that somebody is there.
class ActivitySource {
  public:
    enum class Start {
        Watching,
        /// `watching`, `absent` or `failed` follows.
        Asking,
        /// This desktop has no such thing. Nothing follows.
        Absent,
    };
    virtual ~ActivitySource() = default;
    /// For the log: where the activity is heard of, as the end of a sentence.
    [[nodiscard]] virtual std::string name() const = 0;
    /// Called once at most; `sink` outlives the source.
    virtual Start start(ActivitySink& sink) = 0;
};

} // namespace kelpa
