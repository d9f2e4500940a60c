#pragma once

#include "platform/ports/StatusBar.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

class Menu;

/// One line of a menu. Changes are shown as they are made.
class MenuItem {
  public:
    /// Sets what the line shows; `image` is a symbol name.
    void show(const std::string& image, const std::string& title);
    void setTitle(const std::string& title) { show(line_.image, title); }
    [[nodiscard]] const MenuLine& line() const { return line_; }

  private:
    friend class Menu;
    Menu* menu_ = nullptr;
    MenuLine line_;
    std::function<void()> action_;
};

/// What a click on a line does, and what that is called. Without anything to run the line shows as disabled.
struct MenuCommand {
    const char* name = "";
    std::function<void()> run;
};

/// What a new line is made of.
struct MenuItemSpec {
    std::string image;
    std::string title;
    std::string keyEquivalent;
    int tag = 0; ///< 0 for none
    MenuCommand action;
};

/// The status menu: owns its lines and keeps the face's copy of them up to date.
class Menu final : public MenuClicks {
  public:
    explicit Menu(StatusBar& face) : face_(face) {}

    void add(MenuItemSpec spec) { insert(items_.size(), std::move(spec)); }
    void addSeparator();
    /// `index` is at most the number of lines.
    void insert(std::size_t index, MenuItemSpec spec);
    void remove(MenuItem& item);
    /// The first line with this tag; null if there is none.
    [[nodiscard]] MenuItem* itemWithTag(int tag) const;

    void didClick(int lineId) override;

  private:
    friend class MenuItem;
    void place(std::size_t index, std::unique_ptr<MenuItem> item);

    StatusBar& face_;
    std::vector<std::unique_ptr<MenuItem>> items_;
    int lastId_ = 0;
};

} // namespace kelpa
