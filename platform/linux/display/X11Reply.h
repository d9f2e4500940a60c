#pragma once

#include <cstdlib>
#include <memory>

namespace kelpa {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What the X server answered; freed with the handle. Null when the request failed.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

} // namespace kelpa
