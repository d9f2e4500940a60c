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
    : QObject(parent), readable_(fd, QSocketNotifier::Read), writable_(fd, QSocketNotifier::Write) {
    // A browser that outlives this program must not hold on to the connection.
    ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    writable_.setEnabled(false);
    connect(&readable_, &QSocketNotifier::activated, this, [this] {
        read();
        emit settled();
    });
    connect(&writable_, &QSocketNotifier::activated, this, [this] {
        writable_.setEnabled(false);
        flush();
    });
    open(fd);
}

/// Little here is worth being put away tidily, and a person waits for the windows to go.
void Channel::lost() {
    emit closing();
    ::_exit(EXIT_SUCCESS);
}

} // namespace kelpa
