#pragma once

namespace kelpa {

/// What fills a window and wants to know whether it can be seen.
class WindowContent {
  public:
    virtual ~WindowContent() = default;
    virtual void appeared() {}
    virtual void disappeared() {}
    /// The window was asked to show, also where it had not yet gone.
    virtual void shown() {}
};

} // namespace kelpa
