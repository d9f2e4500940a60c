#pragma once

#include "platform/ports/PreferencesWindow.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kelpa::test {

/// Plays the core's part behind a preferences window that has every kind of control: keeps what a person
/// does, gives it back as a value, and says each action in one line.
class SamplePreferences final : public PreferencesClient {
  public:
    SamplePreferences(PreferencesWindow& window, std::function<void(const std::string&)> say);

    /// Sets what stands before the blank to what stands behind it, as if another program had.
    void set(const std::string& id, const std::string& value);

    void cameToFront() override;
    void closed() override;
    void switched(const std::string& id, bool on) override;
    void typed(const std::string& id, const std::string& text) override;
    void entered(const std::string& id, const std::string& text) override;
    void stepped(const std::string& id, int direction) override;
    void chosen(const std::string& id, std::int64_t value) override;
    void timeEntered(const std::string& id, int hour, int minute) override;
    void timePointAdded(const std::string& id, int hour, int minute) override;
    void timePointRemoved(const std::string& id, int hour, int minute) override;
    void promptAdded(const std::string& id, const std::string& text) override;
    void promptEdited(const std::string& id, const std::string& old, const std::string& text) override;
    void promptDeleted(const std::string& id, const std::string& text) override;
    void promptsReset(const std::string& id) override;

  private:
    void showAll();
    void showPoints();

    PreferencesWindow& window_;
    std::function<void(const std::string&)> say_;
    std::map<std::string, int> numbers_;
    std::set<std::pair<int, int>> points_{{8, 30}, {10, 0}, {12, 30}, {15, 0}, {17, 45}};
    std::vector<std::string> prompts_;
};

} // namespace kelpa::test
