#pragma once

#include "platform/linux/store/FileAccess.h"
#include "platform/linux/store/PlistDocument.h"
#include "platform/ports/Timers.h"

#include <memory>
#include <string>

namespace kelpa {

/// Where the store tells what went wrong with its file.
class StoreReport {
  public:
    virtual ~StoreReport() = default;
    virtual void warning(const std::string& message) = 0;
    virtual void error(const std::string& message) = 0;
};

/// The settings in one XML property list. A read costs one `stat` and no memory unless the file changed; a
/// write goes to disk at once, over whatever the file holds by then. A value that cannot be stored is kept,
/// read back, and stored with the next write that succeeds. A file that makes no sense may be one that
/// another program is writing: until it has rested for a while the last good values hold, and writes wait.
class PlistStore final : public DefaultsStore {
  public:
    /// `path` is the file, or empty where there is no place for one; `report` and `queue`, which is the main
    /// thread's, outlive the store. Damage is judged after `restSeconds` without a change. Reads nothing yet.
    PlistStore(std::string path, StoreReport& report, Queue& queue, double restSeconds = 1);
    /// Tries once more to store what could not be stored, and for that waits for a file to rest.
    ~PlistStore() override;
    PlistStore(const PlistStore&) = delete;
    PlistStore& operator=(const PlistStore&) = delete;

    [[nodiscard]] std::optional<StoreValue> value(std::string_view key) const override;
    void set(std::string_view key, const StoreValue& value) override;

  private:
    void storeOrTell() const;
    void store() const;
    void refresh() const;
    void load() const;
    struct Loaded {
        PlistDocument document;
        FileIdentity identity;
    };
    static std::optional<Loaded> parsedFile(const std::string& path);
    std::optional<Loaded> loadUnderLock(const std::string& target) const;
    [[nodiscard]] bool rests(const FileIdentity& identity) const;
    void lookAgainLater() const;
    void lookAgain() const;
    void remember(const PlistDocument& document, const FileIdentity& identity) const;
    void cannot(const std::string& what, const std::exception& why, bool& told) const;

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

} // namespace kelpa
