#pragma once

#include <string>
#include <vector>

namespace kelpa {

/// What a person can do in the update window.
enum class UpdateAction { Install, Later, Skip, Cancel, Close };

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
    std::string notesLink = {};             ///< its address
    std::vector<UpdateButton> buttons = {}; ///< from left to right, what is offered first at the right end
    Progress progress = Progress::None;
    double fraction = 0; ///< from 0 to 1
};

/// What is told of what a person did.
class UpdateWindowClient {
  public:
    virtual ~UpdateWindowClient() = default;
    /// `Close` also when the window was closed as windows are.
    virtual void act(UpdateAction action) = 0;
};

/// The window that shows it.
class UpdateWindow {
  public:
    virtual ~UpdateWindow() = default;
    /// The client outlives its time as a client, which ends with null.
    virtual void setClient(UpdateWindowClient* client) = 0;
    virtual void setPage(const UpdatePage& page) = 0;
    enum class Attention {
        None,   ///< nobody asked for the window: it must not get in anybody's way
        Wanted, ///< somebody waits for it
    };
    /// Brings the window up, or to the front where it is up already.
    virtual void present(Attention attention) = 0;
    virtual void close() = 0;
};

} // namespace kelpa
