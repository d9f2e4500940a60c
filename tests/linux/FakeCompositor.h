#pragma once

#include <functional>
#include <memory>
#include <string>

namespace kelpa::test {

/// A Wayland compositor on a thread of its own that can tell of idle seats and of nothing else. While it is
/// there the environment points to it.
class FakeCompositor {
  public:
    enum class Speaks { Nothing, Kde, Both };
    explicit FakeCompositor(Speaks speaks);
    /// Ends as a crash does: without a word.
    ~FakeCompositor();
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;

    /// Plugs a seat in and gives its number, counted from 0.
    int addSeat();
    void removeSeat(int seat);
    /// Tells whoever asked about the seat that nobody uses it, or that somebody does again.
    void tell(int seat, bool idle);

    struct Question {
        std::string protocol; ///< "ext" or "kde"; empty when nobody asks
        unsigned milliseconds = 0;
    };
    /// What is being asked about the seat.
    [[nodiscard]] Question question(int seat);

  private:
    struct State;
    void perform(const std::function<void()>& work);

    std::unique_ptr<State> state_;
};

} // namespace kelpa::test
