#include "platform/linux/tray/LinuxStatusBar.h"

#include <algorithm>

namespace kelpa {

void LinuxStatusBar::addSink(StatusItemSink& sink) {
    if (std::find(sinks_.begin(), sinks_.end(), &sink) != sinks_.end())
        return;
    sinks_.push_back(&sink);
    if (clicks_ != nullptr)
        sink.show(model_, *clicks_);
}

void LinuxStatusBar::removeSink(StatusItemSink& sink) {
    if (std::erase(sinks_, &sink) > 0 && clicks_ != nullptr)
        sink.hide();
}

std::vector<MenuLine>::iterator LinuxStatusBar::find(int lineId) {
    return std::find_if(model_.lines.begin(), model_.lines.end(),
                        [lineId](const MenuLine& line) { return line.id == lineId; });
}

template <typename Verb>
void LinuxStatusBar::tell(const Verb& verb) {
    if (clicks_ != nullptr)
        for (StatusItemSink* sink : sinks_)
            verb(*sink);
}

void LinuxStatusBar::lineInserted(std::size_t index, const MenuLine& line) {
    const auto place = std::min(index, model_.lines.size());
    model_.lines.insert(model_.lines.begin() + static_cast<std::ptrdiff_t>(place), line);
    tell([&](StatusItemSink& sink) { sink.lineInserted(place, line); });
}

void LinuxStatusBar::lineRemoved(int lineId) {
    const auto line = find(lineId);
    if (line == model_.lines.end())
        return;
    model_.lines.erase(line);
    tell([&](StatusItemSink& sink) { sink.lineRemoved(lineId); });
}

void LinuxStatusBar::lineChanged(const MenuLine& line) {
    const auto old = find(line.id);
    if (old == model_.lines.end() || *old == line)
        return;
    *old = line;
    tell([&](StatusItemSink& sink) { sink.lineChanged(line); });
}

void LinuxStatusBar::createItem(const std::string& image, MenuClicks& clicks) {
    model_.image = image;
    clicks_ = &clicks;
    tell([&](StatusItemSink& sink) { sink.show(model_, clicks); });
}

void LinuxStatusBar::setTitle(const std::string& title) {
    if (title == model_.title)
        return;
    model_.title.assign(title);
    tell([&](StatusItemSink& sink) { sink.titleChanged(title); });
}

void LinuxStatusBar::setHint(const std::string& hint) {
    if (hint == model_.hint)
        return;
    model_.hint = hint;
    tell([&](StatusItemSink& sink) { sink.hintChanged(hint); });
}

void TrayFallback::setHostPresent(bool present) {
    if (present) {
        waiting_.cancel();
        statusBar_.removeSink(sink_);
    } else if (!waiting_.active()) {
        waiting_ = loop_.afterReal(patience, [this] { statusBar_.addSink(sink_); });
    }
}

} // namespace kelpa
