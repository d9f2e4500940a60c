#include "platform/linux/busy/SoundRecording.h"

#include "base/Text.h"
#include "platform/linux/Folders.h"
#include "platform/linux/busy/CommandOutput.h"
#include "platform/linux/busy/DesktopBusyness.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <string_view>
#include <utility>

namespace kelpa {

namespace {

constexpr const char* tool = "pactl";

std::string_view trimmed(std::string_view line) {
    const auto first = line.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : line.substr(first);
}

/// The value behind a line's name, as in "Corked: no"; nothing where it has another name.
std::optional<std::string_view> valueOf(std::string_view line, std::string_view name) {
    line = trimmed(line);
    if (!line.starts_with(name))
        return std::nullopt;
    return trimmed(line.substr(name.size()));
}

/// A stream as it is listed.
struct Stream {
    bool listed = false; ///< its heading was there
    std::string source;
    bool corked = false;
    bool ofProgram = true;
    bool meter = false; ///< of how loud it is, as mixers show it

    void read(std::string_view line) {
        if (const auto number = valueOf(line, "Source:"))
            source = *number;
        else if (const auto still = valueOf(line, "Corked:"))
            corked = *still == "yes";
        else if (const auto client = valueOf(line, "Client:"))
            ofProgram = *client != "n/a";
        else if (valueOf(line, "Resample method:") == "peaks" ||
                 valueOf(line, "resample.peaks =") == "\"true\"") // as PulseAudio and PipeWire have it
            meter = true;
    }
    [[nodiscard]] bool records() const { return listed && !source.empty() && !corked && ofProgram && !meter; }
};

/// What is asked for in two steps, of which the second is seldom needed.
class Question {
  public:
    Question(EventLoop& loop, Launcher& launcher, BusySource::Answer answer)
        : loop_(loop), launcher_(launcher), answer_(std::move(answer)) {
        running_ =
            readOutput(loop_, launcher_, {tool, "list", "source-outputs"}, [this](const std::string& text) {
                recorded_ = recordedSources(text);
                recorded_.empty() ? answer_(false) : askSources();
            });
    }

  private:
    void askSources() {
        running_ = readOutput(loop_, launcher_, {tool, "list", "sources"}, [this](const std::string& text) {
            const auto real = realSources(text);
            answer_(std::any_of(recorded_.begin(), recorded_.end(),
                                [&real](const std::string& source) { return real.count(source) > 0; }));
        });
    }

    EventLoop& loop_;
    Launcher& launcher_;
    BusySource::Answer answer_;
    std::set<std::string> recorded_;
    Subscription running_;
};

} // namespace

std::set<std::string> recordedSources(const std::string& streams) {
    std::set<std::string> found;
    Stream stream;
    const auto finish = [&] {
        if (stream.records())
            found.insert(stream.source);
    };
    std::istringstream lines(streams);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("Source Output #")) {
            finish();
            stream = {};
            stream.listed = true;
        } else {
            stream.read(line);
        }
    finish();
    return found;
}

std::set<std::string> realSources(const std::string& sources) {
    constexpr std::string_view heading = "Source #";
    std::set<std::string> found;
    std::string number;
    std::istringstream lines(sources);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(heading))
            number = line.substr(heading.size());
        else if (valueOf(line, "Monitor of Sink:") == "n/a")
            found.insert(number);
    return found;
}

BusySource soundRecording(EventLoop& loop) {
    const auto ask = [&loop, launcher = std::make_shared<Launcher>(loop)](BusySource::Answer answer) {
        return keeping(std::make_shared<Question>(loop, *launcher, std::move(answer)));
    };
    const auto unavailable = []() -> std::optional<std::string> {
        if (!programOnPath(tool).empty())
            return std::nullopt;
        return localized("This needs the program pactl, which is not installed.");
    };
    return {ask, unavailable};
}

} // namespace kelpa
