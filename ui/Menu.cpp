#include "ui/Menu.h"

#include <algorithm>

namespace kelpa {

void MenuItem::show(const std::string& image, const std::string& title) {
    line_.image = image;
    line_.title = title;
    menu_.face_.lineChanged(line_);
}

void Menu::insert(std::size_t index, MenuLine line, std::function<void()> run) {
    line.id = ++lastId_;
    line.enabled = line.separator || run;
    if (!run)
        line.action.clear();
    const auto place = items_.begin() + static_cast<std::ptrdiff_t>(index);
    const auto item =
        items_.insert(place, std::make_unique<MenuItem>(*this, std::move(line), std::move(run)));
    face_.lineInserted(index, (*item)->line_);
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
    if (found == items_.end() || !(*found)->run_)
        return;
    // What runs may remove the line, so it runs on a copy.
    const auto run = (*found)->run_;
    run();
}

} // namespace kelpa
