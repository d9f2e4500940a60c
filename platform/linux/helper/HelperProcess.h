#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/helper/AnswerWatch.h"
#include "platform/linux/helper/Connection.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// Path of one of the program's own helper programs: beside the program in a build tree, in
/// the folder for helpers where it is installed, usually `../libexec/kelpa`.
[[nodiscard]] std::string helperPath(const std::string& name);

/// Keeps a program that crashes again and again from being started again and again.
class RestartBudget {
  public:
    /// `seconds` on any clock that only goes forward. False when `most` starts lie in the last minute.
    bool spend(double seconds);

  private:
    static constexpr std::size_t most = 3;
    static constexpr double window = 60;
    std::deque<double> taken_;
};

/// Hears of a helper program, always from the main loop.
class HelperClient {
  public:
    virtual ~HelperClient() = default;
    /// It said something that is for no addressee.
    virtual void helperSaid(const wire::Message& message) = 0;
    /// It ended without having been asked to, or hung and was killed; `how` says it in words for the log.
    virtual void helperFailed(const std::string& how) = 0;
};

enum class Answers {
    NotAwaited,
    Watched, ///< the helper says what it has taken in, and is killed when it owes that for too long
};

/// One helper program and the connection to it, which the helper has as descriptor 3. Nothing here ever waits
/// for the helper: one that does not read what it is sent, or does not end when it should, is killed, and
/// none outlives this program.
class HelperProcess : public wire::Connection, private AnswerWatchClient {
  public:
    /// `client` outlives the process object.
    HelperProcess(EventLoop& loop, std::string path, HelperClient& client,
                  Answers answers = Answers::NotAwaited);
    /// Takes half a second at most.
    ~HelperProcess() override;
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    /// Starts the helper unless it runs. Gives the reason when it cannot be started, else an empty text.
    std::string start();
    [[nodiscard]] bool running() const { return child_ != nullptr; }
    /// Process id of the helper; 0 when none runs.
    [[nodiscard]] int pid() const;
    /// Closes the connection, on which the helper ends by itself.
    void end();

  private:
    struct Child;
    void said(const wire::Message& message) override;
    void sent() override;
    void crowded() override;
    void lost() override { disconnect(); }
    void readAnswers() override { read(); }
    [[nodiscard]] bool helperBusy() const override { return heldUpByWork(pid()); }
    void ask() override { send({wire::ping}); }
    void helperHangs(double seconds) override;

    void watch(const std::shared_ptr<Child>& child);
    void disconnect();
    void ended(Child& child, int status);

    EventLoop& loop_;
    std::string path_;
    HelperClient& client_;
    std::optional<AnswerWatch> answers_; ///< where answers are watched
    std::shared_ptr<Child> child_;
    std::vector<std::shared_ptr<Child>> leaving_;
};

} // namespace kelpa
