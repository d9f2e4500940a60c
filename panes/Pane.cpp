#include "panes/Pane.h"

namespace kelpa {

void Pane::show() {
    for (const auto& control : controls_)
        control->show();
}

void Pane::closed() {
    for (const auto& control : controls_)
        control->closed();
}

void Pane::addSection(std::string title) {
    layout_.sections.push_back({std::move(title), {}});
}

void Pane::add(const std::string& caption, std::unique_ptr<PaneControl> control) {
    layout_.sections.back().rows.push_back({caption, control->description()});
    controls_.push_back(std::move(control));
}

} // namespace kelpa
