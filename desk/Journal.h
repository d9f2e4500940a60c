#pragma once

#include "desk/VirtualTime.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa::desk {

/// What happened, a line an event, in the order it happened.
class Journal {
  public:
    explicit Journal(const VirtualTime& time) : time_(time) {}
    virtual ~Journal() = default;

    /// Leaves out the events of a kind: the first word of a line.
    void quiet(const std::string& kind) { quiet_.insert(kind); }
    /// Whether events of a kind are kept: ask before making the text of an event that comes every second.
    [[nodiscard]] bool keeps(std::string_view kind) const { return quiet_.find(kind) == quiet_.end(); }
    /// Notes `kind text` at the current virtual time.
    void note(std::string_view kind, std::string_view text = {});
    /// Keeps asides as well: steps that belong to no script's format, for a test that compares their order.
    void hearAsides() { asides_ = true; }
    void aside(std::string_view kind, std::string_view text) {
        if (asides_)
            note(kind, text);
    }

  protected:
    virtual void line(const std::string& text) = 0;

  private:
    const VirtualTime& time_;
    std::set<std::string, std::less<>> quiet_;
    bool asides_ = false;
};

/// Prints each line at once.
class PrintedJournal final : public Journal {
  public:
    using Journal::Journal;

  protected:
    void line(const std::string& text) override;
};

/// Keeps the lines for a test to compare.
class KeptJournal final : public Journal {
  public:
    using Journal::Journal;
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  protected:
    void line(const std::string& text) override { lines_.push_back(text); }

  private:
    std::vector<std::string> lines_;
};

/// A text in double quotes, on one line.
[[nodiscard]] std::string inQuotes(std::string_view text);
/// A text without quotes, on one line.
[[nodiscard]] std::string oneLine(std::string_view text);

} // namespace kelpa::desk
