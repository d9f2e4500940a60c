#include "platform/linux/busy/SoundRecording.h"

#include "base/Text.h"
#include "platform/linux/Folders.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace kelpa {

namespace {

constexpr const char* tool = "pactl";

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

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
struct Question {
    CommandOutput& commands;
    BusySource::Answer answer;
    std::set<std::string> recorded = {};
    Subscription running = {};

    void askStreams() {
        running = commands.read({tool, "list", "source-outputs"}, [this](const std::string& text) {
            recorded = recordedSources(text);
            recorded.empty() ? answer(false) : askSources();
        });
    }
    void askSources() {
        running = commands.read({tool, "list", "sources"}, [this](const std::string& text) {
            const auto real = realSources(text);
            answer(std::any_of(recorded.begin(), recorded.end(),
                               [&real](const std::string& source) { return real.count(source) > 0; }));
        });
    }
};

} // namespace

std::set<std::string> recordedSources(std::string_view streams) {
    std::set<std::string> found;
    Stream stream;
    while (!streams.empty()) {
        const auto line = takeLine(streams);
        if (line.starts_with("Source Output #")) {
            stream = {};
            stream.listed = true;
        } else {
            stream.read(line);
        }
        if (streams.empty() || streams.starts_with("Source Output #"))
            if (stream.records())
                found.insert(stream.source);
    }
    return found;
}

std::set<std::string> realSources(std::string_view sources) {
    constexpr std::string_view heading = "Source #";
    std::set<std::string> found;
    std::string number;
    while (!sources.empty()) {
        const auto line = takeLine(sources);
        if (line.starts_with(heading))
            number = line.substr(heading.size());
        else if (valueOf(line, "Monitor of Sink:") == "n/a")
            found.insert(number);
    }
    return found;
}

Subscription SoundRecording::ask(Answer answer) {
    auto question = std::make_shared<Question>(Question{commands_, std::move(answer)});
    question->askStreams();
    return Subscription([question]() mutable { question = nullptr; });
}

std::optional<std::string> SoundRecording::unavailable() {
    if (!programOnPath(tool).empty())
        return std::nullopt;
    return localized("This needs the program pactl, which is not installed.");
}

} // namespace kelpa
