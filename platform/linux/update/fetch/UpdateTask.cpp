#include "platform/linux/update/fetch/UpdateTask.h"

#include "platform/linux/helper/UpdateProtocol.h"

#include <algorithm>

namespace kelpa {

namespace update = wire::update;

namespace {

constexpr qint64 largestFeed = 1024 * 1024;
constexpr qint64 largestPackage = 512 * 1024 * 1024;
/// Nobody waits longer for a download, however steadily it trickles in.
constexpr int downloadSeconds = 2 * 60 * 60;
constexpr int longestVersion = 60;
constexpr int longestLink = 2000;

QString text(const wire::Message& message, std::size_t field) {
    return QString::fromStdString(message.field(field));
}

/// Whether it can be shown to a person as a version: short, and without signs that nobody sees.
bool isVersion(const QString& text) {
    return text.size() <= longestVersion &&
           std::all_of(text.begin(), text.end(), [](QChar sign) { return sign.isPrint(); });
}

/// The address of the notes; none where it leads to no secure page.
std::string linkTo(const QUrl& notes) {
    const std::string link = notes.toString(QUrl::FullyEncoded).toStdString();
    return Fetch::refusal(notes).empty() && link.size() <= longestLink ? link : "";
}

} // namespace

UpdateTask::UpdateTask(Channel& channel) : channel_(channel) {
    network_.setAutoDeleteReplies(false);
    connect(&channel_, &Channel::received, this, &UpdateTask::obey);
    // Nothing is left behind of a download that nobody waits for any more.
    connect(&channel_, &Channel::closing, this, [this] { file_.reset(); });
}

void UpdateTask::obey(const wire::Message& message) {
    if (message.verb() == update::check)
        check();
    else if (message.verb() == update::download)
        download();
    else
        configure(message);
}

void UpdateTask::configure(const wire::Message& message) {
    if (message.verb() == update::source) {
        feed_ = QUrl(text(message, 1), QUrl::StrictMode);
        key_ = message.field(2);
        reader_.packageEnding = text(message, 3);
    } else if (message.verb() == update::running) {
        reader_.runningVersion = text(message, 1);
        runningName_ = text(message, 2);
        reader_.systemVersion = text(message, 3);
    } else if (message.verb() == update::folder) {
        folder_ = text(message, 1);
    } else if (message.verb() == update::patience) {
        feedSeconds_ = message.number(1).value_or(0);
        stallSeconds_ = message.number(2).value_or(0);
    } else if (message.verb() == update::profile) {
        profile_.addQueryItem(text(message, 1),
                              QString::fromLatin1(QUrl::toPercentEncoding(text(message, 2))));
    }
}

void UpdateTask::start(const QUrl& url, const FetchBounds& bounds, Fetch::Sink sink,
                       void (UpdateTask::*next)()) {
    if (const std::string why = Fetch::refusal(url); !why.empty())
        return fail(update::insecure, why);
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Kelpa/") + runningName_);
    fetch_ = std::make_unique<Fetch>(network_, request, bounds, std::move(sink));
    // Queued, because what follows does away with the fetch that tells it.
    connect(
        fetch_.get(), &Fetch::ended, this,
        [this, next](const FetchFailure& failure) {
            failure.reason.empty() ? (this->*next)() : fail(failure.reason, failure.detail);
        },
        Qt::QueuedConnection);
}

void UpdateTask::check() {
    QUrl url = feed_;
    if (!profile_.isEmpty()) {
        QUrlQuery query(url);
        for (const auto& [name, value] : profile_.queryItems(QUrl::FullyEncoded))
            query.addQueryItem(name, value);
        url.setQuery(query);
    }
    bytes_.clear();
    offer_.reset();
    const auto keep = [this](QByteArrayView part) {
        bytes_.append(part);
        return true;
    };
    start(url, {largestFeed, feedSeconds_, feedSeconds_}, keep, &UpdateTask::read);
}

void UpdateTask::read() {
    fetch_.reset();
    const auto items = parseAppcast(std::exchange(bytes_, {}), feed_);
    if (!items)
        return fail(update::malformed, "the feed is none");
    const auto news = newestFor(reader_, *items);
    if (const auto* found = std::get_if<AppcastOffer>(&news))
        offer(*found);
    else
        channel_.send({std::get<AppcastNews>(news) == AppcastNews::None ? update::latest : update::outgrown});
}

/// What could not be trusted once it was fetched is not offered at all.
void UpdateTask::offer(const AppcastOffer& offer) {
    const auto& [item, package] = offer;
    if (const std::string why = Fetch::refusal(package.address); !why.empty())
        return fail(update::insecure, why);
    if (package.signature.isEmpty())
        return fail(update::signature, "the package has none");
    if (package.length <= 0 || package.length > largestPackage)
        return fail(update::malformed, "announced are " + std::to_string(package.length) + " bytes");
    if (!isVersion(item.version) || !isVersion(item.name))
        return fail(update::malformed, "the version is none");
    offer_ = offer;
    channel_.send({update::found, item.version.toStdString(), item.name.toStdString(), linkTo(item.notes),
                   std::to_string(package.length)});
}

void UpdateTask::download() {
    if (!offer_)
        return fail(update::malformed, "there is nothing to download");
    file_.emplace(folder_, reader_.packageEnding);
    if (!file_->error().empty())
        return fail(update::disk, file_->error());
    lastPercent_ = 0;
    start(
        offer_->package.address, {offer_->package.length, downloadSeconds, stallSeconds_},
        [this](QByteArrayView bytes) { return store(bytes); }, &UpdateTask::verify);
}

bool UpdateTask::store(QByteArrayView bytes) {
    if (!file_->append(bytes))
        return false;
    const qint64 percent = file_->size() * 100 / offer_->package.length;
    if (std::exchange(lastPercent_, percent) != percent)
        channel_.send({update::progress, std::to_string(file_->size())});
    return true;
}

void UpdateTask::verify() {
    fetch_.reset();
    const auto& [item, package] = *offer_;
    if (file_->size() != package.length)
        return fail(update::length,
                    std::to_string(file_->size()) + " bytes instead of " + std::to_string(package.length));
    if (!file_->isSigned(package.signature.toStdString(), key_))
        return fail(update::signature, "the package is not what its maker signed");
    // The signature does not tell which version was signed: a feed could pass an old one off as new.
    const QString inside = versionInside(file_->path());
    if (inside.isEmpty())
        return fail(update::unversioned, "dpkg-deb does not tell the package's version");
    if (versionOrder(inside, runningName_) < 0)
        return fail(update::older, "the package is version " + inside.toStdString());
    const QString path = file_->keepAs(item.version);
    if (path.isEmpty())
        return fail(update::disk, file_->error());
    file_.reset();
    channel_.send({update::ready, path.toStdString()});
}

void UpdateTask::fail(std::string_view reason, const std::string& detail) {
    fetch_.reset();
    // A package that is longer than announced is one thing, a feed that is too large another.
    if (file_ && reason == update::tooLarge)
        reason = update::length;
    const std::string disk = file_ && reason == update::disk ? file_->error() : "";
    file_.reset();
    channel_.send({update::failed, reason, disk.empty() ? detail : disk});
}

} // namespace kelpa
