#include "platform/linux/view/Channel.h"

#include <QCoreApplication>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kelpa {

bool Channel::isConnection(int fd) {
    int type = 0;
    socklen_t size = sizeof type;
    return ::getsockopt(fd, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_STREAM;
}

Channel::Channel(int fd, QObject* parent)
    : QObject(parent), reader_(fd), writer_(fd), readable_(fd, QSocketNotifier::Read),
      writable_(fd, QSocketNotifier::Write) {
    // A browser that outlives this program must not hold on to the connection.
    ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    writable_.setEnabled(false);
    connect(&readable_, &QSocketNotifier::activated, this, &Channel::read);
    connect(&writable_, &QSocketNotifier::activated, this, &Channel::flush);
}

void Channel::read() {
    const auto state = reader_.read([this](const wire::Message& message) {
        if (!addressees_.deliver(message))
            emit received(message);
    });
    emit settled();
    if (state == wire::LineReader::State::Closed)
        end();
}

void Channel::send(std::initializer_list<std::string_view> fields) {
    writer_.send(fields);
    flush();
}

void Channel::flush() {
    const auto state = writer_.flush();
    writable_.setEnabled(state == wire::LineWriter::State::Pending);
    if (state == wire::LineWriter::State::Broken)
        end();
}

/// Little here is worth being put away tidily, and a person waits for the windows to go.
void Channel::end() {
    emit closing();
    ::_exit(EXIT_SUCCESS);
}

} // namespace kelpa
