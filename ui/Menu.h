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
    /// Without anything to `run` at a click the line shows as disabled.
    MenuItem(Menu& menu, MenuLine line, std::function<void()> run)
        : menu_(menu), line_(std::move(line)), run_(std::move(run)) {}

    /// Sets what the line shows; `image` is a symbol name.
    void show(const std::string& image, const std::string& title);
    void setTitle(const std::string& title) { show(line_.image, title); }
    [[nodiscard]] const MenuLine& line() const { return line_; }

  private:
    friend class Menu;
    Menu& menu_;
    MenuLine line_;
    std::function<void()> run_;
};

/// The status menu: owns its lines and keeps the face's copy of them up to date.
class Menu final : public MenuClicks {
  public:
    explicit Menu(StatusBar& face) : face_(face) {}

    void add(MenuLine line, std::function<void()> run = {}) {
        insert(items_.size(), std::move(line), std::move(run));
    }
    /// `index` is at most the number of lines. The line gets its number here, and is enabled if there is
    /// something to `run` at a click.
    void insert(std::size_t index, MenuLine line, std::function<void()> run);
    void remove(MenuItem& item);
    /// The first line with this tag; null if there is none.
    [[nodiscard]] MenuItem* itemWithTag(int tag) const;

    void didClick(int lineId) override;

  private:
    friend class MenuItem;

    StatusBar& face_;
    std::vector<std::unique_ptr<MenuItem>> items_;
    int lastId_ = 0;
};

} // namespace kelpa
