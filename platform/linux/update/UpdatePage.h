#pragma once

#include <string>
#include <vector>

namespace kelpa {

/// What a person can do in the update window.
enum class UpdateAction { Install, Later, Skip, Cancel, Close, Notes };

struct UpdateButton {
    UpdateAction action;
    std::string text;
};

/// All that the update window shows at one time.
struct UpdatePage {
    enum class Progress {
        None,
        Busy,  ///< something goes on, and nobody knows how long
        Known, ///< so much of it is done
    };
    std::string headline;
    std::string text = {};                  ///< empty for none
    std::string notes = {};                 ///< text of the link to the release notes; empty for none
    std::vector<UpdateButton> buttons = {}; ///< from left to right, what is offered first at the right end
    Progress progress = Progress::None;
    double fraction = 0; ///< from 0 to 1
};

/// The window that shows it.
class UpdateWindow {
  public:
    virtual ~UpdateWindow() = default;
    virtual void setPage(const UpdatePage& page) = 0;
    /// Brings the window up, or to the front where it is up already.
    virtual void present() = 0;
    virtual void close() = 0;
};

} // namespace kelpa
