#pragma once

#include "platform/linux/update/Appcast.h"
#include "platform/linux/update/fetch/Fetch.h"
#include "platform/linux/update/fetch/PackageFile.h"
#include "platform/linux/view/Channel.h"

#include <QNetworkAccessManager>
#include <QUrlQuery>
#include <memory>
#include <optional>

namespace kelpa {

/// Reads the feed, fetches what is in it and verifies it, as the program says. Decides nothing else.
class UpdateTask : public QObject {
    Q_OBJECT

  public:
    explicit UpdateTask(Channel& channel);

  private:
    void obey(const wire::Message& message);
    void configure(const wire::Message& message);
    void check();
    void read();
    void offer(const AppcastOffer& offer);
    void download();
    bool store(QByteArrayView bytes);
    void verify();
    void start(const QUrl& url, const FetchBounds& bounds, Fetch::Sink sink, void (UpdateTask::*next)());
    void fail(std::string_view reason, const std::string& detail);

    Channel& channel_;
    QNetworkAccessManager network_;
    QUrl feed_;
    std::string key_;
    AppcastReader reader_;
    QString runningName_;
    QString folder_;
    QUrlQuery profile_;
    int feedSeconds_ = 0;
    int stallSeconds_ = 0;

    std::unique_ptr<Fetch> fetch_;
    QByteArray bytes_; ///< of the feed
    std::optional<AppcastOffer> offer_;
    std::optional<PackageFile> file_;
    qint64 lastPercent_ = 0;
};

} // namespace kelpa
