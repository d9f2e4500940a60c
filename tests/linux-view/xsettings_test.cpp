#include "platform/linux/view/X11.h"

#include <gtest/gtest.h>

namespace {

using kelpa::x11::findSetting;

/// Puts published settings together as a settings program does.
class Publisher {
  public:
    explicit Publisher(bool bigEndian) : bigEndian_(bigEndian) {
        bytes_.append(bigEndian ? '\1' : '\0').append(3, '\0');
        number(7, 4);
    }
    void count(quint32 count) { number(count, 4); }
    void text(const QByteArray& name, const QByteArray& value) {
        head(1, name);
        number(static_cast<quint32>(value.size()), 4);
        padded(value);
    }
    void integer(const QByteArray& name, quint32 value) {
        head(0, name);
        number(value, 4);
    }
    void color(const QByteArray& name) {
        head(2, name);
        bytes_.append(8, '\x7f');
    }
    [[nodiscard]] const QByteArray& bytes() const { return bytes_; }

  private:
    void head(char kind, const QByteArray& name) {
        bytes_.append(kind).append('\0');
        number(static_cast<quint32>(name.size()), 2);
        padded(name);
        number(1, 4);
    }
    void padded(const QByteArray& text) { bytes_.append(text).append((4 - text.size() % 4) % 4, '\0'); }
    void number(quint32 value, int size) {
        for (int i = 0; i < size; ++i)
            bytes_.append(static_cast<char>(value >> 8 * (bigEndian_ ? size - 1 - i : i) & 0xffU));
    }

    bool bigEndian_;
    QByteArray bytes_;
};

QByteArray published(bool bigEndian) {
    Publisher publisher(bigEndian);
    publisher.count(4);
    publisher.integer("Xft/DPI", 98304);
    publisher.color("Odd/Color");
    publisher.text("Net/IconThemeName", "abc");
    publisher.text("Net/ThemeName", "Adwaita-dark");
    return publisher.bytes();
}

TEST(XSettings, AreFoundInBothByteOrders) {
    for (const bool bigEndian : {false, true}) {
        EXPECT_EQ(findSetting(published(bigEndian), "Net/ThemeName"), "Adwaita-dark");
        EXPECT_EQ(findSetting(published(bigEndian), "Net/IconThemeName"), "abc");
        EXPECT_EQ(findSetting(published(bigEndian), "Xft/DPI"), "");
        EXPECT_EQ(findSetting(published(bigEndian), "Net/Theme"), "");
    }
}

TEST(XSettings, AreNotFoundInWhatIsCutOff) {
    const QByteArray whole = published(false);
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_EQ(findSetting(whole.left(length), "Net/ThemeName"), "") << length;
}

TEST(XSettings, SurviveWhateverIsPublished) {
    Publisher many(false);
    many.count(0xffffffffU);
    many.text("a", "b");
    EXPECT_EQ(findSetting(many.bytes(), "Net/ThemeName"), "");
    EXPECT_EQ(findSetting(QByteArray(5000, '\xff'), "Net/ThemeName"), "");
    EXPECT_EQ(findSetting(QByteArray(5000, '\0'), "Net/ThemeName"), "");
    Publisher huge(false);
    huge.count(1);
    QByteArray bytes = huge.bytes() + QByteArray("\1\0\1\0a\0\0\0\0\0\0\0\xff\xff\xff\xff", 16);
    EXPECT_EQ(findSetting(bytes, "a"), "");
}

} // namespace
