#pragma once

#include "platform/linux/helper/Connection.h"

#include <QObject>
#include <QSocketNotifier>

namespace kelpa {

/// The connection to the program that started this one. When it closes, or is not read for far too long, this
/// program ends at once: what it shows has lost its meaning.
class Channel : public QObject, public wire::Connection {
    Q_OBJECT

  public:
    /// The descriptor that the program hands to its helpers.
    static constexpr int descriptor = 3;

    explicit Channel(int fd = descriptor, QObject* parent = nullptr);
    /// Whether `fd` is a connection at all; a person who starts this program by hand gives it none.
    [[nodiscard]] static bool isConnection(int fd = descriptor);
    using wire::Connection::lines;

  signals:
    /// A message that is for no addressee.
    void received(const kelpa::wire::Message& message);
    /// What came in one go has been handed over.
    void settled();
    /// This program ends as soon as everybody has been told.
    void closing();

  private:
    void said(const wire::Message& message) override { emit received(message); }
    void crowded() override { writable_.setEnabled(true); }
    [[noreturn]] void lost() override;

    QSocketNotifier readable_;
    QSocketNotifier writable_;
};

} // namespace kelpa
