#include "platform/linux/helper/Connection.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace kelpa::wire;
using namespace std::string_literals;

/// Two connected ends.
class Pair {
  public:
    Pair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()), 0); }
    ~Pair() {
        closeFirst();
        ::close(ends_[1]);
    }
    Pair(const Pair&) = delete;
    Pair& operator=(const Pair&) = delete;
    void closeFirst() {
        if (ends_[0] >= 0)
            ::close(ends_[0]);
        ends_[0] = -1;
    }
    [[nodiscard]] int first() const { return ends_[0]; }
    [[nodiscard]] int second() const { return ends_[1]; }

  private:
    std::array<int, 2> ends_{};
};

std::string line(std::initializer_list<std::string_view> fields) {
    std::string text;
    encode(fields, text);
    return text;
}

/// An end whose owner writes down what he is told.
struct TestEnd final : Connection {
    explicit TestEnd(int fd) { open(fd); }
    using Connection::close;
    using Connection::flush;
    using Connection::lines;
    using Connection::open;

    /// What comes in one go and is for no addressee.
    std::vector<Message> readAll() {
        messages.clear();
        read();
        return messages;
    }
    void said(const Message& message) override {
        messages.push_back(message);
        if (onMessage)
            onMessage();
    }
    void sent() override { ++timesSent; }
    void crowded() override { isCrowded = true; }
    void lost() override { isLost = true; }

    std::vector<Message> messages;
    std::function<void()> onMessage;
    int timesSent = 0;
    bool isCrowded = false;
    bool isLost = false;
};

void put(const Pair& pair, const std::string& bytes) {
    ASSERT_EQ(::send(pair.first(), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
}

TEST(WireMessage, KeepsAnyText) {
    const std::vector<std::string> fields{"set",         "",           "tab\tfeed\nback\\return\r",
                                          "zero\0byte"s, "放松眼睛，", ""};
    const std::string text = line({fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]});
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_EQ(decode(text.substr(0, text.size() - 1)), Message(fields));
    EXPECT_EQ(line({"set", "a\tb"}), "set\ta\\tb\n");
}

TEST(WireMessage, RefusesWhatIsDamaged) {
    for (const char* damaged : {"set\t\\", "set\ta\\q", "\\", "a\\\tb"})
        EXPECT_FALSE(decode(damaged)) << damaged;
    EXPECT_EQ(decode("")->verb(), "");
}

TEST(WireMessage, ReadsNumbersWhateverTheyAre) {
    const Message message({"v", "12", "-3", "12x", "", "99999999999", "0.5", "nan", "1e999", "0,5"});
    EXPECT_EQ(message.number(1), 12);
    EXPECT_EQ(message.number(2), -3);
    for (const std::size_t none : {3U, 4U, 5U, 6U, 40U})
        EXPECT_FALSE(message.number(none)) << none;
    EXPECT_EQ(message.real(6), 0.5);
    for (const std::size_t none : {3U, 4U, 7U, 8U, 9U, 40U})
        EXPECT_FALSE(message.real(none)) << none;
    EXPECT_EQ(Message({realText(0.25)}).real(0), 0.25);
    EXPECT_EQ(message.field(40), "");
}

TEST(WireConnection, ReachesWhomALineIsForAsLongAsHeIsThere) {
    struct Hearer final : Addressee {
        void hear(const Message& message) override { heard = message; }
        Message heard;
    } second;
    const Pair pair;
    TestEnd end(pair.second());
    end.add(2, second);
    put(pair, "2\tset\t5\n");
    EXPECT_TRUE(end.readAll().empty());
    EXPECT_EQ(second.heard, Message({"set", "5"}, 2));
    for (const char* forNobody : {"set\t2", "3\tset\t5", "2x\tset", "", "99999999999\tset"}) {
        put(pair, forNobody + "\n"s);
        EXPECT_EQ(end.readAll(), std::vector{*decode(forNobody)});
    }
    end.remove(2);
    put(pair, "2\tset\t6\n");
    EXPECT_EQ(end.readAll(), std::vector{Message({"set", "6"}, 2)});
    EXPECT_EQ(second.heard.field(1), "5");
}

TEST(WireConnection, PutsLinesTogetherHoweverTheyCome) {
    const Pair pair;
    TestEnd end(pair.second());
    put(pair, "one\ttw");
    EXPECT_TRUE(end.readAll().empty());
    put(pair, "o\nthree\n\nfo");
    EXPECT_EQ(end.readAll(), (std::vector{Message({"one", "two"}), Message({"three"}), Message({""})}));
    put(pair, "ur\n");
    EXPECT_EQ(end.readAll(), std::vector{Message({"four"})});
    EXPECT_EQ(end.lines(), 4);
}

TEST(WireConnection, LeavesOutDamageAndGoesOn) {
    const Pair pair;
    TestEnd end(pair.second());
    put(pair, "bad\\x\n");
    const std::string piece(Connection::longestLine / 16, 'x');
    for (int i = 0; i <= 16; ++i) {
        put(pair, piece);
        EXPECT_TRUE(end.readAll().empty());
    }
    put(pair, "still the long one\ngood\n");
    EXPECT_EQ(end.readAll(), std::vector{Message({"good"})});
    EXPECT_EQ(end.lines(), 3);
}

TEST(WireConnection, IsLostAfterWhatTheOtherEndSaidLast) {
    Pair pair;
    TestEnd end(pair.second());
    put(pair, "last\nunfinish");
    pair.closeFirst();
    end.onMessage = [&end] { EXPECT_FALSE(end.isLost); };
    EXPECT_EQ(end.readAll(), std::vector{Message({"last"})});
    EXPECT_TRUE(end.isLost);
}

TEST(WireConnection, WhoeverHearsMayCloseItAndBeginAnother) {
    Pair pair;
    const Pair other;
    TestEnd end(pair.second());
    put(pair, "one\ntwo\nhal");
    pair.closeFirst();
    end.onMessage = [&] {
        end.close();
        end.open(other.second());
    };
    EXPECT_EQ(end.readAll(), std::vector{Message({"one"})});
    EXPECT_FALSE(end.isLost) << "it is another connection by now";
    end.onMessage = nullptr;
    put(other, "three\n");
    EXPECT_EQ(end.readAll(), std::vector{Message({"three"})});
    EXPECT_EQ(end.lines(), 1);
}

TEST(WireConnection, WhoeverHearsMayDoAwayWithIt) {
    struct Fleeting final : Connection {
        explicit Fleeting(int fd) { open(fd); }
        using Connection::read;
        void said(const Message& message) override {
            EXPECT_EQ(message.verb(), "one");
            delete this; // as its owner would
        }
        void crowded() override {}
        void lost() override { ADD_FAILURE(); }
    };
    Pair pair;
    auto* end = new Fleeting(pair.second());
    put(pair, "one\ntwo\n");
    pair.closeFirst();
    end->read();
}

TEST(WireConnection, SurvivesNoise) {
    std::mt19937 random(7);
    const Pair pair;
    TestEnd end(pair.second());
    int lines = 0;
    int messages = 0;
    for (int round = 0; round < 300; ++round) {
        std::string noise(random() % 900, ' ');
        for (char& byte : noise)
            byte = "\\\t\nntrabc\0\xff"[random() % 12];
        lines += static_cast<int>(std::count(noise.begin(), noise.end(), '\n'));
        put(pair, noise);
        messages += static_cast<int>(end.readAll().size());
    }
    EXPECT_EQ(end.lines(), lines);
    EXPECT_GT(messages, 0);
    EXPECT_LT(messages, lines) << "nothing was damaged";
}

TEST(WireConnection, NeverWaitsAndLosesNothing) {
    const Pair pair;
    TestEnd writer(pair.first());
    TestEnd reader(pair.second());
    const std::string text(1000, 'y');
    int sent = 0;
    for (; !writer.isCrowded; writer.send({"number", std::to_string(sent++), text}))
        ASSERT_LT(sent, 100000);
    EXPECT_EQ(writer.timesSent, sent);
    std::vector<Message> all;
    while (std::exchange(writer.isCrowded, false)) {
        for (auto& message : reader.readAll())
            all.push_back(std::move(message));
        writer.flush();
    }
    for (auto& message : reader.readAll())
        all.push_back(std::move(message));
    ASSERT_EQ(all.size(), static_cast<std::size_t>(sent));
    for (int i = 0; i < sent; ++i)
        EXPECT_EQ(all[static_cast<std::size_t>(i)], Message({"number", std::to_string(i), text}));
}

TEST(WireConnection, GivesUpOnOneWhoNeverReads) {
    const Pair pair;
    TestEnd writer(pair.first());
    const std::string text(10000, 'z');
    for (int i = 0; i < 1000 && !writer.isLost; ++i)
        writer.send({text});
    EXPECT_TRUE(writer.isLost);
    const int sent = writer.timesSent;
    writer.send({"more"});
    EXPECT_EQ(writer.timesSent, sent);
}

TEST(WireConnection, NoticesThatTheOtherEndIsGone) {
    Pair pair;
    TestEnd writer(pair.second());
    pair.closeFirst();
    writer.send({"anyone?"});
    EXPECT_TRUE(writer.isLost);
}

} // namespace
