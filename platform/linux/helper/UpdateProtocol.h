#pragma once

#include <string_view>

/// What the program and `kelpa-update` say to each other.
namespace kelpa::wire::update {

// From the program to the helper; the first three before anything else.
/// source FEED KEY ENDING: address of the feed, the public key of its packages, and how the names of the
/// packages end that this system can install.
inline constexpr std::string_view source = "source";
/// running VERSION NAME SYSTEM: what runs: the version that counts, the one that people see, and the
/// system's.
inline constexpr std::string_view running = "running";
/// folder PATH: where a download goes; nothing else lies there.
inline constexpr std::string_view folder = "folder";
/// patience FEED STALL: seconds that the feed may take, and that a download may stand still.
inline constexpr std::string_view patience = "patience";
/// profile NAME VALUE: tells the feed's server this with the next check.
inline constexpr std::string_view profile = "profile";
/// check: reads the feed.
inline constexpr std::string_view check = "check";
/// download: fetches the release that was found, and verifies it.
inline constexpr std::string_view download = "download";

// From the helper to the program.
/// latest: nothing is newer than what runs.
inline constexpr std::string_view latest = "latest";
/// outgrown: something is, but not for this version of the system.
inline constexpr std::string_view outgrown = "outgrown";
/// found VERSION NAME NOTES LENGTH: a release; NOTES is an address or empty, LENGTH the bytes of its package.
inline constexpr std::string_view found = "found";
/// progress RECEIVED: bytes so far, at most a hundred times.
inline constexpr std::string_view progress = "progress";
/// ready PATH: the package, which is what its maker signed.
inline constexpr std::string_view ready = "ready";
/// failed REASON DETAIL: the end of a check or a download; DETAIL is for the log.
inline constexpr std::string_view failed = "failed";

// Reasons.
inline constexpr std::string_view unreachable = "unreachable";
inline constexpr std::string_view insecure = "insecure"; ///< no HTTPS, or nobody vouches for the server
inline constexpr std::string_view answer = "answer";     ///< the server has something else to say
inline constexpr std::string_view slow = "slow";
inline constexpr std::string_view tooLarge = "tooLarge";
inline constexpr std::string_view malformed = "malformed";     ///< no feed, or one that is built to do harm
inline constexpr std::string_view length = "length";           ///< not as long as announced
inline constexpr std::string_view signature = "signature";     ///< not signed by the maker
inline constexpr std::string_view older = "older";             ///< a version before the one that runs
inline constexpr std::string_view unversioned = "unversioned"; ///< nothing tells which version it is
inline constexpr std::string_view disk = "disk";

} // namespace kelpa::wire::update
