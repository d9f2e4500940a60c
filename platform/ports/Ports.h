#pragma once

#include "base/Calendar.h"
#include "base/FatalError.h"
#include "base/Text.h"
#include "platform/ports/DefaultsStore.h"
#include "platform/ports/HistoryFiles.h"
#include "platform/ports/Services.h"
#include "platform/ports/StatusBar.h"
#include "platform/ports/System.h"
#include "platform/ports/Timers.h"
#include "platform/ports/WindowSystem.h"

namespace kelpa {

/// Everything that the core asks of a desktop. The face owns what is behind it and keeps it alive until the
/// process ends.
struct Ports {
    Clock& clock;
    TickerSource& tickers;
    Queue& mainQueue;
    QueueSource& queues;
    DefaultsStore& defaults;
    HistoryFiles& history;
    StatusBar& statusBar;
    WindowSystem& windows;
    const SystemInfo& system;
    Fonts& fonts;
    Translations translations;
    RandomBelow random;
    FatalErrorHandler fatalErrors;
    ApplicationLoop& application;
    LockNotifications& lock;
    ActivityMonitor& activity;
    Services services;
};

} // namespace kelpa
