#include "platform/linux/helper/HelperProcess.h"

#include "platform/linux/Descriptors.h"
#include "platform/linux/helper/HelperChild.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <utility>

namespace kelpa {

namespace {

/// How long a helper may take to end after its connection closed.
constexpr double patience = 2.0;
/// When to try again what a busy helper had no room for.
constexpr double retryAfter = 0.02;

std::string inWords(int status) {
    if (WIFSIGNALED(status))
        return "was ended by signal " + std::to_string(WTERMSIG(status));
    return "ended with code " + std::to_string(WEXITSTATUS(status));
}

} // namespace

std::string helperPath(const std::string& name) {
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    const auto beside = folder / name;
    if (!error && std::filesystem::exists(beside, error))
        return beside.string();
    return (folder / KELPA_HELPER_FOLDER / name).lexically_normal().string();
}

struct HelperProcess::Child {
    explicit Child(int descriptor) : fd(descriptor) {}

    void close() {
        onReadable.cancel();
        onRetry.cancel();
        fd.close();
    }

    Descriptor fd; ///< goes after those who watch it
    int pid = 0;
    Subscription onReadable;
    Subscription onRetry;
    Subscription onEnd;
    Subscription onImpatience;
};

bool RestartBudget::spend(double seconds) {
    while (!taken_.empty() && seconds - taken_.front() >= window)
        taken_.pop_front();
    if (taken_.size() >= most)
        return false;
    taken_.push_back(seconds);
    return true;
}

HelperProcess::HelperProcess(EventLoop& loop, std::string path, HelperClient& client, Answers answers)
    : loop_(loop), path_(std::move(path)), client_(client) {
    AnswerWatchClient& watched = *this;
    if (answers == Answers::Watched)
        answers_.emplace(loop, watched);
}

/// No loop may be left that would notice a helper that goes on.
HelperProcess::~HelperProcess() {
    end();
    for (const auto& child : leaving_) {
        child->onEnd.cancel();
        endHelper(child->pid);
    }
}

int HelperProcess::pid() const {
    return child_ ? child_->pid : 0;
}

std::string HelperProcess::start() {
    if (child_)
        return {};
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return std::generic_category().message(errno);
    const auto child = std::make_shared<Child>(ends[0]);
    const Descriptor theirs(ends[1]);
    try {
        child->pid = startHelper(path_, theirs.get());
        watch(child);
    } catch (const std::system_error& error) {
        if (child->pid != 0)
            endHelper(child->pid);
        return error.what();
    }
    child_ = child;
    open(child->fd.get());
    if (answers_)
        answers_->begin();
    return {};
}

void HelperProcess::watch(const std::shared_ptr<Child>& child) {
    // The loop's callbacks hold the child while they run, so that a client may end the helper from within.
    const std::weak_ptr<Child> weak = child;
    child->onEnd = loop_.watchChild(child->pid, [this, weak](int status) {
        if (const auto held = weak.lock())
            ended(*held, status);
    });
    child->onReadable = loop_.watch(child->fd.get(), [this, weak] {
        if (const auto held = weak.lock())
            read();
    });
}

void HelperProcess::said(const wire::Message& message) {
    if (answers_ && message.verb() == wire::taken)
        answers_->taken(message.number(1).value_or(0));
    else
        client_.helperSaid(message);
}

void HelperProcess::sent() {
    if (answers_)
        answers_->sent();
}

void HelperProcess::crowded() {
    if (!child_->onRetry.active())
        child_->onRetry = loop_.afterReal(retryAfter, [this] {
            child_->onRetry.cancel();
            flush();
        });
}

void HelperProcess::disconnect() {
    close();
    if (!child_->fd)
        return;
    child_->close();
    child_->onImpatience = loop_.afterReal(patience, [pid = child_->pid] { ::kill(pid, SIGKILL); });
}

void HelperProcess::end() {
    if (!child_)
        return;
    if (answers_)
        answers_->end();
    disconnect();
    leaving_.push_back(std::move(child_));
}

void HelperProcess::helperHangs(double seconds) {
    ::kill(child_->pid, SIGKILL);
    close();
    child_->close();
    leaving_.push_back(std::move(child_));
    client_.helperFailed("has not answered for " + wire::realText(seconds) + " s");
}

void HelperProcess::ended(Child& child, int status) {
    child.onImpatience.cancel();
    const auto left = std::find_if(leaving_.begin(), leaving_.end(),
                                   [&child](const auto& other) { return other.get() == &child; });
    if (left != leaving_.end()) {
        leaving_.erase(left);
        return;
    }
    if (answers_)
        answers_->end();
    close();
    child_.reset();
    client_.helperFailed(inWords(status));
}

} // namespace kelpa
