#pragma once

#include "platform/linux/helper/Lines.h"

#include <QObject>
#include <QSocketNotifier>
#include <initializer_list>
#include <string_view>

namespace kelpa {

/// The connection to the program that started this one. When it closes, or is not read for far too long, this
/// program ends at once: what it shows has lost its meaning.
class Channel : public QObject {
    Q_OBJECT

  public:
    /// The descriptor that the program hands to its helpers.
    static constexpr int descriptor = 3;

    explicit Channel(int fd = descriptor, QObject* parent = nullptr);
    /// Whether `fd` is a connection at all; a person who starts this program by hand gives it none.
    [[nodiscard]] static bool isConnection(int fd = descriptor);
    void send(std::initializer_list<std::string_view> fields);
    /// Those who hear themselves what the program has to say to them, while they are there.
    [[nodiscard]] wire::Addressees& addressees() { return addressees_; }
    /// How many lines have come, also such as were no messages.
    [[nodiscard]] int lines() const { return reader_.lines(); }

  signals:
    /// A message that is for no addressee.
    void received(const kelpa::wire::Message& message);
    /// What came in one go has been handed over.
    void settled();
    /// This program ends as soon as everybody has been told.
    void closing();

  private:
    void read();
    void flush();
    [[noreturn]] void end();

    wire::LineReader reader_;
    wire::LineWriter writer_;
    wire::Addressees addressees_;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
};

} // namespace kelpa
