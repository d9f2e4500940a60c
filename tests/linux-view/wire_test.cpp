#include "platform/linux/helper/Lines.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <sys/socket.h>
#include <unistd.h>

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

std::vector<Message> readAll(LineReader& reader, LineReader::State expected = LineReader::State::Open) {
    std::vector<Message> messages;
    EXPECT_EQ(reader.read([&messages](const Message& message) { messages.push_back(message); }), expected);
    return messages;
}

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

TEST(WireMessage, ReachesWhomItIsForAsLongAsHeIsThere) {
    struct Hearer final : Addressee {
        void hear(const Message& message) override { heard = message; }
        Message heard;
    } second;
    Addressees addressees;
    addressees.add(2, second);
    EXPECT_TRUE(addressees.deliver(*decode("2\tset\t5")));
    EXPECT_EQ(second.heard, Message({"set", "5"}, 2));
    for (const char* forNobody : {"set\t2", "3\tset\t5", "2x\tset", "", "99999999999\tset"})
        EXPECT_FALSE(addressees.deliver(*decode(forNobody))) << forNobody;
    addressees.remove(2);
    EXPECT_FALSE(addressees.deliver(*decode("2\tset\t6")));
    EXPECT_EQ(second.heard.field(1), "5");
}

TEST(WireReader, PutsLinesTogetherHoweverTheyCome) {
    const Pair pair;
    LineReader reader(pair.second());
    put(pair, "one\ttw");
    EXPECT_TRUE(readAll(reader).empty());
    put(pair, "o\nthree\n\nfo");
    EXPECT_EQ(readAll(reader), (std::vector{Message({"one", "two"}), Message({"three"}), Message({""})}));
    put(pair, "ur\n");
    EXPECT_EQ(readAll(reader), std::vector{Message({"four"})});
    EXPECT_EQ(reader.lines(), 4);
}

TEST(WireReader, LeavesOutDamageAndGoesOn) {
    const Pair pair;
    LineReader reader(pair.second());
    put(pair, "bad\\x\n");
    const std::string piece(LineReader::longestLine / 16, 'x');
    for (int i = 0; i <= 16; ++i) {
        put(pair, piece);
        EXPECT_TRUE(readAll(reader).empty());
    }
    put(pair, "still the long one\ngood\n");
    EXPECT_EQ(readAll(reader), std::vector{Message({"good"})});
    EXPECT_EQ(reader.lines(), 3);
}

TEST(WireReader, SaysThatTheOtherEndIsGoneAfterWhatItSaidLast) {
    Pair pair;
    LineReader reader(pair.second());
    put(pair, "last\nunfinish");
    pair.closeFirst();
    EXPECT_EQ(readAll(reader, LineReader::State::Closed), std::vector{Message({"last"})});
}

TEST(WireReader, SurvivesNoise) {
    std::mt19937 random(7);
    const Pair pair;
    LineReader reader(pair.second());
    int lines = 0;
    int messages = 0;
    for (int round = 0; round < 300; ++round) {
        std::string noise(random() % 900, ' ');
        for (char& byte : noise)
            byte = "\\\t\nntrabc\0\xff"[random() % 12];
        lines += static_cast<int>(std::count(noise.begin(), noise.end(), '\n'));
        put(pair, noise);
        messages += static_cast<int>(readAll(reader).size());
    }
    EXPECT_EQ(reader.lines(), lines);
    EXPECT_GT(messages, 0);
    EXPECT_LT(messages, lines) << "nothing was damaged";
}

TEST(WireWriter, NeverWaitsAndLosesNothing) {
    const Pair pair;
    LineWriter writer(pair.first());
    LineReader reader(pair.second());
    const std::string text(1000, 'y');
    int sent = 0;
    while (writer.send({"number", std::to_string(sent++), text}) == LineWriter::State::Idle)
        ASSERT_LT(sent, 100000);
    std::vector<Message> all;
    while (writer.flush() == LineWriter::State::Pending)
        for (auto& message : readAll(reader))
            all.push_back(std::move(message));
    for (auto& message : readAll(reader))
        all.push_back(std::move(message));
    ASSERT_EQ(all.size(), static_cast<std::size_t>(sent));
    for (int i = 0; i < sent; ++i)
        EXPECT_EQ(all[static_cast<std::size_t>(i)], Message({"number", std::to_string(i), text}));
}

TEST(WireWriter, GivesUpOnOneWhoNeverReads) {
    const Pair pair;
    LineWriter writer(pair.first());
    const std::string text(10000, 'z');
    LineWriter::State state = LineWriter::State::Idle;
    for (int i = 0; i < 1000 && state != LineWriter::State::Broken; ++i)
        state = writer.send({text});
    EXPECT_EQ(state, LineWriter::State::Broken);
    EXPECT_EQ(writer.send({"more"}), LineWriter::State::Broken);
}

TEST(WireWriter, NoticesThatTheOtherEndIsGone) {
    Pair pair;
    LineWriter writer(pair.second());
    pair.closeFirst();
    EXPECT_EQ(writer.send({"anyone?"}), LineWriter::State::Broken);
}

} // namespace
