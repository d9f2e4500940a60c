#pragma once

#include "platform/linux/EventLoop.h"

namespace kelpa {

/// Whether it is no wonder that a process does not get on: it computes, waits for a disk, or sleeps on a
/// machine on which far more is to be done than it has processors. One that was stopped is not held up by
/// that.
[[nodiscard]] bool heldUpByWork(int pid);

/// Whose answers are watched.
class AnswerWatchClient {
  public:
    virtual ~AnswerWatchClient() = default;
    /// What has come already is to be taken in now: nobody is judged by what lies unread.
    virtual void readAnswers() = 0;
    /// Whether it is no wonder that the helper says nothing, since it or the whole machine has much to do.
    [[nodiscard]] virtual bool helperBusy() const = 0;
    /// Nothing was said for a while: something is to be sent that wants an answer.
    virtual void ask() = 0;
    /// The helper owed an answer for `seconds` and is watched no more.
    virtual void helperHangs(double seconds) = 0;
};

/// Notices a helper that hangs: one that has not taken in what it was sent. It may take two seconds, ten
/// while it starts, and longer after each one that hung, in case the machine is slow. Time in which there is
/// much to do counts for a fifth, and time in which this program itself was held up for next to nothing,
/// since then the helper was most likely held up as well.
class AnswerWatch {
  public:
    /// Loop and client outlive the watch. Waiting goes by steps of so many seconds, of which each counts as
    /// one however late it ends.
    AnswerWatch(const EventLoop& loop, AnswerWatchClient& client, double step = 0.5);

    /// A helper was started, which has been sent nothing yet.
    void begin();
    void end();
    /// Needs no memory.
    void sent();
    /// The helper has taken in so many of all the messages that it was sent.
    void taken(int count);

  private:
    [[nodiscard]] bool owed() const { return taken_ < sent_; }
    void rest();
    void ring();
    void wait();
    [[nodiscard]] int mostWeight() const;

    AnswerWatchClient& client_;
    Alarm alarm_;
    double step_;
    bool watching_ = false;
    bool starting_ = false;
    int sent_ = 0;
    int taken_ = 0;
    int steps_ = 0;  ///< for which it has owed an answer
    int weight_ = 0; ///< of these steps
    int slowness_ = 1;
};

} // namespace kelpa
