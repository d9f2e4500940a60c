#include "platform/linux/store/PlistStore.h"

#include "platform/linux/store/FileAccess.h"
#include "platform/linux/store/PlistDocument.h"

#include <ctime>
#include <system_error>
#include <utility>

namespace kelpa {

namespace {

constexpr std::int64_t nanosecondsASecond = 1'000'000'000;
/// How long two changes of a file may bear the same time stamp.
constexpr std::int64_t stampGrain = 50'000'000;
/// Between two looks at a file that keeps the program from its end.
constexpr timespec betweenLooks{0, 20'000'000};

std::int64_t nanoseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * nanosecondsASecond + now.tv_nsec;
}

/// True when no later change can hide behind the file's time stamp.
bool isSettled(const FileIdentity& identity) {
    const auto age = nanoseconds(CLOCK_REALTIME) - identity.changed;
    return !identity.exists() || age > stampGrain || age < -stampGrain;
}

std::string lockName(const std::string& path) {
    return path + ".lock";
}

class PlistStore final : public DefaultsStore {
  public:
    PlistStore(std::string path, StoreReport& report, Queue& queue, double restSeconds)
        : path_(std::move(path)), report_(report), queue_(queue),
          rest_(static_cast<std::int64_t>(restSeconds * nanosecondsASecond)) {}
    PlistStore(const PlistStore&) = delete;
    PlistStore& operator=(const PlistStore&) = delete;

    ~PlistStore() override {
        const std::int64_t end = nanoseconds(CLOCK_MONOTONIC) + rest_;
        while (!held_.empty()) {
            storeOrTell();
            if (!look_ || ending_)
                break;
            nanosleep(&betweenLooks, nullptr);
            // Somebody may write for ever, and what is judged too early is only set aside.
            ending_ = nanoseconds(CLOCK_MONOTONIC) >= end;
        }
        if (look_)
            look_->cancel();
    }

    [[nodiscard]] std::optional<StoreValue> value(std::string_view key) const override {
        refresh();
        for (const StoreValues* values : {&held_, &values_})
            if (const auto found = values->find(key); found != values->end())
                return found->second;
        return std::nullopt;
    }

    void set(std::string_view key, const StoreValue& value) override {
        held_.insert_or_assign(std::string(key), value);
        storeOrTell();
    }

  private:
    struct Loaded {
        PlistDocument document;
        FileIdentity identity;
    };

    void storeOrTell() const {
        try {
            store();
            toldOfWrite_ = false;
        } catch (const std::exception& why) {
            cannot("Settings cannot be stored and hold for this run only: ", why, toldOfWrite_);
        }
    }

    void store() const {
        if (path_.empty())
            throw std::runtime_error("the home folder is unknown");
        const std::string target = linkTarget(path_);
        makeFolderOf(target);
        const FileLock lock(lockName(target));
        auto loaded = loadUnderLock(target);
        if (!loaded)
            return lookAgainLater();
        for (const auto& [key, value] : held_)
            loaded->document.set(key, value);
        remember(loaded->document, replaceFile(target, loaded->document.xml()));
        held_.clear();
    }

    void refresh() const {
        if (path_.empty())
            return;
        try {
            const auto identity = FileIdentity::of(path_);
            if (settled_ && identity == identity_)
                return;
            // Taken over before the attempt: a file that cannot be read is left alone until it changes.
            identity_ = identity;
            settled_ = true;
            load();
            toldOfRead_ = false;
        } catch (const std::exception& why) {
            cannot("Settings cannot be read: ", why, toldOfRead_);
        }
    }

    void load() const {
        auto loaded = parsedFile(path_);
        if (!loaded && rests(identity_)) {
            const std::string target = linkTarget(path_);
            const FileLock lock(lockName(target));
            loaded = loadUnderLock(target);
        }
        if (!loaded)
            return lookAgainLater();
        remember(loaded->document, loaded->identity);
    }

    /// By the file's time stamp, or by how long it has been seen unchanged where that stamp cannot be relied
    /// on.
    bool rests(const FileIdentity& identity) const {
        const std::int64_t now = nanoseconds(CLOCK_MONOTONIC);
        if (identity != restless_)
            seenSince_ = now;
        restless_ = identity;
        return ending_ || now - seenSince_ >= rest_ ||
               nanoseconds(CLOCK_REALTIME) - identity.changed >= rest_;
    }

    void lookAgainLater() const {
        if (look_)
            return;
        look_ = std::make_shared<WorkItem>([this] { lookAgain(); });
        queue_.asyncAfter(static_cast<double>(rest_) / nanosecondsASecond, look_);
    }

    void lookAgain() const {
        look_ = nullptr;
        settled_ = false;
        if (held_.empty())
            refresh();
        else
            storeOrTell();
    }

    /// What the file holds, an empty list where there is none; nothing when it is damaged.
    static std::optional<Loaded> parsedFile(const std::string& path) {
        const auto content = readFile(path);
        if (!content)
            return Loaded{};
        auto document = PlistDocument::parse(content->bytes);
        if (!document)
            return std::nullopt;
        return Loaded{std::move(*document), content->identity};
    }

    /// A damaged file is moved out of the way, because it may still be mended by hand; nothing is given for
    /// one that may only be half-written, by a program that does not know our lock.
    std::optional<Loaded> loadUnderLock(const std::string& target) const {
        if (auto loaded = parsedFile(target))
            return loaded;
        if (!rests(FileIdentity::of(target)))
            return std::nullopt;
        const std::string name = setAside(target);
        report_.warning("The settings file was damaged and is now " + name + "; defaults apply.");
        return Loaded{};
    }

    void remember(const PlistDocument& document, const FileIdentity& identity) const {
        values_ = document.values();
        identity_ = identity;
        settled_ = isSettled(identity);
    }

    /// Says it once: the same trouble comes back with every write, or once a second.
    void cannot(const std::string& what, const std::exception& why, bool& told) const {
        if (!std::exchange(told, true))
            report_.error(what + why.what());
    }

    std::string path_;
    StoreReport& report_;
    // A read of a setting may have to bring up to date what follows.
    /// Values that the file does not hold yet.
    mutable StoreValues held_;
    mutable bool toldOfWrite_ = false;
    // What the file held when it was last read.
    mutable StoreValues values_;
    mutable FileIdentity identity_;
    mutable bool settled_ = false;
    mutable bool toldOfRead_ = false;

    // Of a file that makes no sense and has not rested yet.
    Queue& queue_;
    std::int64_t rest_; ///< nanoseconds
    mutable FileIdentity restless_;
    mutable std::int64_t seenSince_ = 0;     ///< nanoseconds of a steady clock
    mutable std::shared_ptr<WorkItem> look_; ///< while it is waited for
    bool ending_ = false;                    ///< no more waiting
};

} // namespace

std::unique_ptr<DefaultsStore> makePlistStore(std::string path, StoreReport& report, Queue& queue,
                                              double restSeconds) {
    return std::make_unique<PlistStore>(std::move(path), report, queue, restSeconds);
}

} // namespace kelpa
