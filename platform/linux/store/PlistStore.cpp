#include "platform/linux/store/PlistStore.h"

#include <ctime>
#include <system_error>
#include <utility>

namespace kelpa {

namespace {

constexpr std::int64_t nanosecondsASecond = 1'000'000'000;
/// How long two changes of a file may bear the same time stamp.
constexpr std::int64_t stampGrain = 50'000'000;
/// How long another program may need to write the file in place.
constexpr timespec halfWritten{0, 20'000'000};

/// True when no later change can hide behind the file's time stamp.
bool isSettled(const FileIdentity& identity) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const auto age = now.tv_sec * nanosecondsASecond + now.tv_nsec - identity.changed;
    return !identity.exists() || age > stampGrain || age < -stampGrain;
}

std::string lockName(const std::string& path) {
    return path + ".lock";
}

} // namespace

PlistStore::PlistStore(std::string path, StoreReport& report) : path_(std::move(path)), report_(report) {}

PlistStore::~PlistStore() {
    if (!held_.empty())
        storeOrTell();
}

std::optional<bool> PlistStore::boolean(std::string_view key) const {
    return read<bool>(key);
}
std::optional<std::int64_t> PlistStore::integer(std::string_view key) const {
    return read<std::int64_t>(key);
}
std::optional<double> PlistStore::real(std::string_view key) const {
    return read<double>(key);
}
std::optional<std::string> PlistStore::text(std::string_view key) const {
    return read<std::string>(key);
}
std::optional<std::vector<std::string>> PlistStore::texts(std::string_view key) const {
    return read<std::vector<std::string>>(key);
}

void PlistStore::setBoolean(std::string_view key, bool value) {
    write(key, value);
}
void PlistStore::setInteger(std::string_view key, std::int64_t value) {
    write(key, value);
}
void PlistStore::setReal(std::string_view key, double value) {
    write(key, value);
}
void PlistStore::setText(std::string_view key, const std::string& value) {
    write(key, value);
}
void PlistStore::setTexts(std::string_view key, const std::vector<std::string>& value) {
    write(key, value);
}

template <typename T>
std::optional<T> PlistStore::read(std::string_view key) const {
    refresh();
    auto found = held_.find(key);
    if (found == held_.end()) {
        found = values_.find(key);
        if (found == values_.end())
            return std::nullopt;
    }
    const T* value = std::get_if<T>(&found->second);
    return value == nullptr ? std::nullopt : std::optional<T>(*value);
}

void PlistStore::write(std::string_view key, StoreValue value) {
    held_.insert_or_assign(std::string(key), std::move(value));
    storeOrTell();
}

void PlistStore::storeOrTell() {
    try {
        store();
        toldOfWrite_ = false;
    } catch (const std::exception& why) {
        cannot("Settings cannot be stored and hold for this run only: ", why, toldOfWrite_);
    }
}

void PlistStore::store() {
    if (path_.empty())
        throw std::runtime_error("the home folder is unknown");
    const std::string target = linkTarget(path_);
    makeFolderOf(target);
    const FileLock lock(lockName(target));
    PlistDocument document = loadUnderLock(target).document;
    for (const auto& [key, value] : held_)
        document.set(key, value);
    remember(document, replaceFile(target, document.xml()));
    held_.clear();
}

void PlistStore::refresh() const {
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

void PlistStore::load() const {
    auto loaded = parsedFile(path_);
    if (!loaded) {
        const std::string target = linkTarget(path_);
        const FileLock lock(lockName(target));
        loaded = loadUnderLock(target);
    }
    remember(loaded->document, loaded->identity);
}

/// What the file holds, an empty list where there is none; nothing when it is damaged.
std::optional<PlistStore::Loaded> PlistStore::parsedFile(const std::string& path) {
    const auto content = readFile(path);
    if (!content)
        return Loaded{};
    auto document = PlistDocument::parse(content->bytes);
    if (!document)
        return std::nullopt;
    return Loaded{std::move(*document), content->identity};
}

/// A damaged file is moved out of the way, because it may still be mended by hand. It is looked at twice: the
/// first look may have met a program that writes without our lock.
PlistStore::Loaded PlistStore::loadUnderLock(const std::string& target) const {
    if (auto loaded = parsedFile(target))
        return std::move(*loaded);
    nanosleep(&halfWritten, nullptr);
    if (auto loaded = parsedFile(target))
        return std::move(*loaded);
    const std::string name = setAside(target);
    report_.warning("The settings file was damaged and is now " + name + "; defaults apply.");
    return {};
}

void PlistStore::remember(const PlistDocument& document, const FileIdentity& identity) const {
    values_ = document.values();
    identity_ = identity;
    settled_ = isSettled(identity);
}

/// Says it once: the same trouble comes back with every write, or once a second.
void PlistStore::cannot(const std::string& what, const std::exception& why, bool& told) const {
    if (!std::exchange(told, true))
        report_.error(what + why.what());
}

} // namespace kelpa
