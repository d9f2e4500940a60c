#include "desk/Script.h"

#include "desk/Values.h"
#include "desk/Verbs.h"

namespace kelpa::desk {

namespace {

constexpr std::string_view blanks = " \t\r";

/// Whether what stands in quotation marks are the texts of a list, in which nothing begins a comment.
bool holdsList(std::string_view line) {
    const bool stores = takeWord(line) == "store" && !takeWord(line).empty();
    return stores && takeWord(line) == "list";
}

/// A comment begins with a sign at the line's beginning or behind a blank: inside a word it belongs to that.
std::string_view withoutComment(std::string_view line) {
    const bool isList = holdsList(line);
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (quoted && line[at] == '\\')
            ++at;
        else if (isList && line[at] == '"')
            quoted = !quoted;
        else if (!quoted && line[at] == '#' &&
                 (at == 0 || blanks.find(line[at - 1]) != std::string_view::npos))
            return line.substr(0, at);
    }
    return line;
}

} // namespace

std::vector<Command> readScript(std::istream& input) {
    std::vector<Command> script;
    std::string text;
    for (int number = 1; std::getline(input, text); ++number) {
        const std::string_view line = trimmed(withoutComment(text), blanks);
        if (line.empty())
            continue;
        try {
            script.push_back({number, readVerb(line, script.empty())});
        } catch (const Problem& problem) {
            throw ScriptError("line " + std::to_string(number) + ": " + problem.what());
        }
    }
    return script;
}

void play(Desk& desk, const std::vector<Command>& script) {
    for (const Command& command : script) {
        if (desk.time.stopped())
            return;
        try {
            command.run(desk);
            desk.time.pass(0);
        } catch (const Problem& problem) {
            throw ScriptError("line " + std::to_string(command.line) + ": " + problem.what());
        }
    }
}

} // namespace kelpa::desk
