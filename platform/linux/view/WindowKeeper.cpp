#include "platform/linux/view/WindowKeeper.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/view/PreferencesWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <stdexcept>
#include <utility>

namespace kelpa::view {

namespace word = wire::view;

namespace {

/// The kinds of windows that there are.
std::unique_ptr<ViewWindow> makeKind(Stage& stage, QQmlEngine& engine, const std::string& kind) {
    if (kind == word::breakKind)
        return makeBreakWindow(stage, engine);
    if (kind == word::waterKind)
        return makeWaterWindow(stage, engine);
    if (kind == word::preferencesKind)
        return std::make_unique<PreferencesWindow>(stage, engine);
    if (kind == word::aboutKind)
        return makeAboutWindow(stage, engine);
    if (kind == word::historyKind)
        return makeHistoryWindow(stage, engine);
    if (kind == word::updateKind)
        return makeUpdateWindow(stage, engine);
    throw std::runtime_error("there is no window of the kind \"" + kind + "\"");
}

constexpr qint64 pauseMilliseconds = 200;

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

} // namespace

WindowKeeper::WindowKeeper(Channel& channel) : channel_(channel) {
    engine_.addImportPath(QStringLiteral(":/")); // where the program's own module is compiled in
    connect(&channel_, &Channel::received, this, &WindowKeeper::obey);
    connect(&channel_, &Channel::settled, this, &WindowKeeper::settle);
    if (stage_->inputIsOurs())
        qApp->installEventFilter(this);
}

WindowKeeper::~WindowKeeper() = default;

void WindowKeeper::complain(const std::string& text) {
    channel_.send({word::warning, text});
}

/// Tells the program that a person uses one of its windows: not what is done there, only that something is.
bool WindowKeeper::eventFilter(QObject* watched, QEvent* event) {
    const bool used = isInput(event->type()) && event->spontaneous() && watched->isWindowType();
    if (used && (!inputTold_.isValid() || inputTold_.elapsed() >= pauseMilliseconds)) {
        inputTold_.start();
        channel_.send({word::input});
    }
    return false;
}

void WindowKeeper::obey(const wire::Message& message) {
    const auto id = message.number(1);
    if (message.addressee())
        complain("no window for \"" + message.verb() + "\"");
    else if (message.verb() == word::activate || message.verb() == word::deactivate)
        focusDue_ = message.verb() == word::activate;
    else if (message.verb() == word::open && id)
        open(*id, message);
    else if (message.verb() == word::drop && id)
        windows_.erase(*id);
    else if (message.verb() != wire::ping)
        complain("nothing is known of \"" + message.verb() + "\"");
}

void WindowKeeper::open(int id, const wire::Message& message) {
    const auto found = windows_.find(id);
    ViewWindow* window = found != windows_.end() ? found->second.get() : make(id, message.field(2));
    if (window == nullptr)
        return;
    window->setTitle(QString::fromStdString(message.field(3)));
    window->setPlace(QRect(message.number(4).value_or(0), message.number(5).value_or(0),
                           message.number(6).value_or(0), message.number(7).value_or(0)),
                     QString::fromStdString(message.field(8)));
}

ViewWindow* WindowKeeper::make(int id, const std::string& kind) {
    try {
        auto window = makeKind(*stage_, engine_, kind);
        window->join(channel_, id);
        connect(window.get(), &ViewWindow::called, this, [this, id] { front_ = id; });
        return windows_.insert_or_assign(id, std::move(window)).first->second.get();
    } catch (const std::runtime_error& error) {
        complain(error.what());
        return nullptr;
    }
}

/// Of the windows that keep the keyboard to themselves, the one on the primary screen, else the first.
ViewWindow* WindowKeeper::guardingWindow() const {
    ViewWindow* first = nullptr;
    for (const auto& [id, window] : windows_) {
        if (!window->staying() || !window->guardsKeyboard())
            continue;
        if (window->screen() == QGuiApplication::primaryScreen())
            return window.get();
        if (first == nullptr)
            first = window.get();
    }
    return first;
}

/// The one that was shown last, else any that stays.
ViewWindow* WindowKeeper::frontWindow() const {
    const auto last = windows_.find(front_);
    if (last != windows_.end() && last->second->staying())
        return last->second.get();
    for (const auto& [id, window] : windows_)
        if (window->staying())
            return window.get();
    return nullptr;
}

void WindowKeeper::giveKeyboard() {
    if (guardingWindow() != nullptr) {
        focusDue_ = false;
        return stage_->focusGuarded();
    }
    if (ViewWindow* window = frontWindow()) {
        focusDue_ = false;
        window->takeKeyboard();
    }
}

/// The lowest first: breaks cover everything.
std::vector<QQuickWindow*> WindowKeeper::shownWindows() const {
    std::vector<QQuickWindow*> shown;
    for (const bool covering : {false, true})
        for (const auto& [id, window] : windows_)
            if (window->isVisible() && window->keptOnTop() && window->guardsKeyboard() == covering)
                shown.push_back(window.get());
    return shown;
}

void WindowKeeper::settle() {
    stage_->guardKeyboard(guardingWindow());
    if (focusDue_)
        giveKeyboard();
    stage_->keepOnTop(shownWindows());
    QTimer::singleShot(0, this, &WindowKeeper::warmUp);
}

void WindowKeeper::warmUp() {
    for (const auto& [id, window] : windows_)
        window->warmUp();
    if (!ready_)
        channel_.send({word::ready});
    ready_ = true;
    tellTaken();
}

/// After everything else that the lines ask for, so that a view that is held up by it does not say so.
void WindowKeeper::tellTaken() {
    if (std::exchange(taken_, channel_.lines()) != channel_.lines())
        channel_.send({wire::taken, std::to_string(taken_)});
}

} // namespace kelpa::view
