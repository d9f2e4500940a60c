#include "platform/linux/update/fetch/Fetch.h"

#include "platform/linux/helper/UpdateProtocol.h"

#include <QNetworkAccessManager>
#include <array>

namespace kelpa {

namespace update = wire::update;

namespace {

constexpr qint64 bufferBytes = 64 * 1024;
constexpr int mostRedirects = 5;
constexpr int statusOk = 200;

/// What every request of ours is, whatever it asks for.
QNetworkRequest plain(QNetworkRequest request) {
    // Never from HTTPS to anything less.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // A few compressed bytes could stand for very many.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setRawHeader("Accept-Language", "en");
    return request;
}

} // namespace

void Fetch::Release::operator()(QNetworkReply* reply) const {
    reply->disconnect();
    reply->abort();
    reply->deleteLater();
}

std::string Fetch::refusal(const QUrl& url) {
    if (url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty())
        return {};
    return "not an address over HTTPS: " + url.toString(QUrl::RemoveUserInfo).toStdString();
}

Fetch::Fetch(QNetworkAccessManager& network, const QNetworkRequest& request, const FetchBounds& bounds,
             Sink sink)
    : bounds_(bounds), sink_(std::move(sink)), reply_(network.get(plain(request))) {
    reply_->setReadBufferSize(bufferBytes);
    connect(reply_.get(), &QNetworkReply::readyRead, this, &Fetch::readArrived);
    connect(reply_.get(), &QNetworkReply::finished, this, &Fetch::finish);
    end_.callOnTimeout(this, [this] { conclude({update::slow, "it took too long"}); });
    stall_.callOnTimeout(this, [this] { conclude({update::slow, "nothing came any more"}); });
    end_.start(std::chrono::seconds(bounds_.seconds));
    stall_.start(std::chrono::seconds(bounds_.stallSeconds));
}

Fetch::~Fetch() = default;

void Fetch::readArrived() {
    // The body of an error or a redirect is of no interest.
    const bool wanted = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == statusOk;
    std::array<char, 16384> part; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    for (;;) {
        const qint64 count = reply_->read(part.data(), part.size());
        if (count <= 0)
            return;
        stall_.start();
        received_ += count;
        if (received_ > bounds_.bytes)
            return conclude({update::tooLarge, "more than " + std::to_string(bounds_.bytes) + " bytes"});
        if (wanted && !sink_(QByteArrayView(part.data(), count)))
            return conclude({update::disk, "it could not be stored"});
    }
}

void Fetch::finish() {
    if (reply_->error() == QNetworkReply::NoError)
        readArrived();
    if (reply_)
        conclude(outcome());
}

FetchFailure Fetch::outcome() const {
    const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const std::string detail = reply_->errorString().toStdString();
    switch (reply_->error()) {
    case QNetworkReply::NoError:
        if (status.toInt() == statusOk)
            return {};
        return {update::answer, "HTTP status " + std::to_string(status.toInt())};
    case QNetworkReply::SslHandshakeFailedError:
    case QNetworkReply::InsecureRedirectError:
    case QNetworkReply::ProtocolUnknownError:
        return {update::insecure, detail};
    case QNetworkReply::TooManyRedirectsError:
        return {update::answer, detail};
    default:
        return {status.isValid() ? update::answer : update::unreachable, detail};
    }
}

void Fetch::conclude(const FetchFailure& how) {
    if (!reply_)
        return;
    reply_.reset();
    emit ended(how);
}

} // namespace kelpa
