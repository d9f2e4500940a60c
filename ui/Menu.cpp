#include "ui/Menu.h"

#include <algorithm>

namespace kelpa {

void MenuItem::show(const std::string& image, const std::string& title) {
    line_.image = image;
    line_.title = title;
    menu_->face_.lineChanged(line_);
}

void Menu::addSeparator() {
    auto item = std::make_unique<MenuItem>();
    item->line_.separator = true;
    place(items_.size(), std::move(item));
}

void Menu::insert(std::size_t index, MenuItemSpec spec) {
    auto item = std::make_unique<MenuItem>();
    item->line_.image = std::move(spec.image);
    item->line_.title = std::move(spec.title);
    item->line_.keyEquivalent = std::move(spec.keyEquivalent);
    item->line_.tag = spec.tag;
    item->line_.action = spec.action.name;
    item->line_.enabled = static_cast<bool>(spec.action.run);
    item->action_ = std::move(spec.action.run);
    place(index, std::move(item));
}

void Menu::place(std::size_t index, std::unique_ptr<MenuItem> item) {
    item->menu_ = this;
    item->line_.id = ++lastId_;
    const MenuLine& line = item->line_;
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), std::move(item));
    face_.lineInserted(index, line);
}

void Menu::remove(MenuItem& item) {
    const int id = item.line_.id;
    std::erase_if(items_, [&](const auto& each) { return each.get() == &item; });
    face_.lineRemoved(id);
}

MenuItem* Menu::itemWithTag(int tag) const {
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [tag](const auto& item) { return item->line_.tag == tag; });
    return found == items_.end() ? nullptr : found->get();
}

void Menu::didClick(int lineId) {
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [lineId](const auto& item) { return item->line_.id == lineId; });
    if (found == items_.end() || !(*found)->action_)
        return;
    // The action may remove the line, so it runs on a copy.
    const auto action = (*found)->action_;
    action();
}

} // namespace kelpa
