#pragma once

#include <cstddef>
#include <deque>

namespace kelpa {

/// Keeps a program that crashes again and again from being started again and again.
class RestartBudget {
  public:
    /// `seconds` on any clock that only goes forward. False when `most` starts lie in the last minute.
    bool take(double seconds) {
        while (!taken_.empty() && seconds - taken_.front() >= window)
            taken_.pop_front();
        if (taken_.size() >= most)
            return false;
        taken_.push_back(seconds);
        return true;
    }

  private:
    static constexpr std::size_t most = 3;
    static constexpr double window = 60;
    std::deque<double> taken_;
};

} // namespace kelpa
