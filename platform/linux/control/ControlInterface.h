#pragma once

/// The program's interface to scripts on the session bus: the names that both ends go by. They are a promise
/// to people's scripts and no matter of how a build is configured.
namespace kelpa::control {

inline constexpr const char* service = "app.orvane.Kelpa";
inline constexpr const char* path = "/app/orvane/Kelpa";
inline constexpr const char* interface = "app.orvane.Kelpa1";
/// The error of a request that the program understood and refuses; its message says why in plain words.
inline constexpr const char* refused = "app.orvane.Kelpa1.Error.Refused";

inline constexpr const char* state = "State";
inline constexpr const char* time = "Time";
inline constexpr const char* seconds = "Seconds";
inline constexpr const char* breakKind = "BreakKind";
inline constexpr const char* heldBy = "HeldBy";
inline constexpr const char* paused = "Paused";
inline constexpr const char* waterEnabled = "WaterEnabled";
inline constexpr const char* waterFinished = "WaterFinished";
inline constexpr const char* waterTarget = "WaterTarget";

/// The method that brings the preferences up, which other starts of the program call.
inline constexpr const char* showSettings = "ShowSettings";
inline constexpr const char* showHistory = "ShowHistory";
inline constexpr const char* watch = "Watch";
inline constexpr const char* unwatch = "Unwatch";

} // namespace kelpa::control
