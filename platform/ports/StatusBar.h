#pragma once

#include <cstddef>
#include <string>

namespace kelpa {

/// One line of the status menu as a face shows it. Texts are ready to show, images are symbol names whose
/// accessibility description is the same name.
struct MenuLine {
    int id = 0; ///< stable for the life of the line, never 0, never reused
    bool separator = false;
    bool enabled = true;
    std::string title = {};
    std::string image = {};         ///< empty for none
    std::string keyEquivalent = {}; ///< one character, with the platform's menu modifier; empty for none
    int tag = 0;                    ///< by which the program finds the line again; 0 for none
    std::string action = {}; ///< name of what a click does, for menus that call by name; empty for none
    bool operator==(const MenuLine&) const = default;
};

/// What a face reports back; the core implements it.
class MenuClicks {
  public:
    virtual ~MenuClicks() = default;
    virtual void didClick(int lineId) = 0;
};

/// The status item and its menu. The menu is filled before the item exists.
class StatusBar {
  public:
    virtual ~StatusBar() = default;
    virtual void lineInserted(std::size_t index, const MenuLine& line) = 0;
    virtual void lineRemoved(int lineId) = 0;
    virtual void lineChanged(const MenuLine& line) = 0;
    /// Puts an item of variable length with the application image `image` before its title into the status
    /// bar and attaches the menu. `clicks` outlives the status bar. Called once.
    virtual void createItem(const std::string& image, MenuClicks& clicks) = 0;
    /// Sets the item's text. Called once a second with the same storage; must not allocate for equal text.
    virtual void setTitle(const std::string& title) = 0;
    /// Sets a sentence that the item's tooltip tells beside what it tells anyway; empty for none, as at the
    /// start.
    virtual void setHint(const std::string& hint) = 0;
};

} // namespace kelpa
