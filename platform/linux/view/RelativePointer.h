#pragma once

#include <QPointF>
#include <functional>
#include <memory>

struct zwp_relative_pointer_manager_v1;
struct zwp_relative_pointer_v1;

namespace kelpa::view {

/// How far the pointer goes, whatever moves under it.
class RelativePointer {
  public:
    /// Null where the compositor does not tell.
    static std::unique_ptr<RelativePointer> find();
    ~RelativePointer();
    RelativePointer(const RelativePointer&) = delete;
    RelativePointer& operator=(const RelativePointer&) = delete;

    /// Runs `moved` with each motion over our own windows until `rest`; the latest call counts. Without a
    /// pointer, does nothing.
    void follow(std::function<void(QPointF distance)> moved);
    void rest();

  private:
    explicit RelativePointer(zwp_relative_pointer_manager_v1* manager) : manager_(manager) {}

    zwp_relative_pointer_manager_v1* manager_;
    zwp_relative_pointer_v1* motion_ = nullptr; ///< null while nobody follows
    std::function<void(QPointF distance)> moved_;
};

} // namespace kelpa::view
