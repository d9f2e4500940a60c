#pragma once

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

class QNetworkAccessManager;

namespace kelpa {

/// How something ended badly: a reason of the protocol, and a detail for the log. No reason means that it
/// ended well.
struct FetchFailure {
    std::string_view reason;
    std::string detail;
};

/// What a fetch may cost.
struct FetchBounds {
    qint64 bytes = 0;
    int seconds = 0;      ///< in all
    int stallSeconds = 0; ///< without a byte
};

/// One file over HTTPS, and over nothing else on the whole way. At no time is more of it in memory than one
/// buffer.
class Fetch : public QObject {
    Q_OBJECT

  public:
    /// Takes what has come; false when it can take no more.
    using Sink = std::function<bool(QByteArrayView)>;
    Fetch(QNetworkAccessManager& network, const QNetworkRequest& request, const FetchBounds& bounds,
          Sink sink);
    ~Fetch() override;

    /// Why `url` is none that may be fetched; empty when it is one.
    [[nodiscard]] static std::string refusal(const QUrl& url);

  signals:
    /// Once. Where it ended well, all of the file has come.
    void ended(const kelpa::FetchFailure& failure);

  private:
    void readArrived();
    void finish();
    [[nodiscard]] FetchFailure outcome() const;
    void conclude(const FetchFailure& how);

    FetchBounds bounds_;
    Sink sink_;
    qint64 received_ = 0;
    QTimer end_;
    QTimer stall_;
    struct Release {
        void operator()(QNetworkReply* reply) const;
    };
    std::unique_ptr<QNetworkReply, Release> reply_;
};

} // namespace kelpa
