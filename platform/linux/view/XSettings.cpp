#include "platform/linux/view/XSettings.h"

#include "platform/linux/view/X11.h"

#include <QtEndian>

namespace kelpa::view {

namespace {

enum class Kind : quint8 { Integer = 0, Text = 1, Color = 2 };

/// Reads the numbers and texts of the published settings one after another. Beyond the end everything is zero
/// and empty, and `good()` says so.
class Cursor {
  public:
    explicit Cursor(const QByteArray& bytes) : bytes_(bytes), bigEndian_(bytes.startsWith('\1')) {}

    template <typename Number>
    Number number() {
        const QByteArray raw = take(sizeof(Number));
        if (raw.isEmpty())
            return 0;
        return bigEndian_ ? qFromBigEndian<Number>(raw.constData())
                          : qFromLittleEndian<Number>(raw.constData());
    }
    /// A text and the bytes that fill it up to a multiple of four.
    QByteArray text(qsizetype length) {
        const QByteArray result = take(length);
        take((4 - length % 4) % 4);
        return result;
    }
    QByteArray take(qsizetype count) {
        good_ = good_ && count >= 0 && count <= bytes_.size() - at_;
        if (!good_)
            return {};
        at_ += count;
        return bytes_.mid(at_ - count, count);
    }
    [[nodiscard]] bool good() const { return good_; }

  private:
    const QByteArray& bytes_;
    qsizetype at_ = 0;
    bool bigEndian_;
    bool good_ = true;
};

} // namespace

QByteArray findXSetting(const QByteArray& published, const QByteArray& name) {
    Cursor cursor(published);
    cursor.take(8); // byte order and serial number
    const auto count = cursor.number<quint32>();
    for (quint32 i = 0; i < count && cursor.good(); ++i) {
        const auto kind = static_cast<Kind>(cursor.number<quint8>());
        cursor.take(1);
        const QByteArray key = cursor.text(cursor.number<quint16>());
        cursor.take(4); // serial number of the last change
        QByteArray value;
        if (kind == Kind::Text)
            value = cursor.text(static_cast<qsizetype>(cursor.number<quint32>()));
        else
            cursor.take(kind == Kind::Integer ? 4 : 8);
        if (key == name && cursor.good())
            return value;
    }
    return {};
}

QByteArray xSetting(const QByteArray& name) {
    const xcb_window_t manager =
        x11::selectionOwner("_XSETTINGS_S" + QByteArray::number(x11::screenNumber()));
    if (manager == XCB_WINDOW_NONE)
        return {};
    return findXSetting(x11::property(manager, "_XSETTINGS_SETTINGS"), name);
}

} // namespace kelpa::view
