// SPDX-License-Identifier: MIT
#include "headless/runtime/host.h"

#include <thread>

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/warnings.h"
#include "headless/runtime/guarded_call.h"
#include "headless/runtime/platform.h"
#include "headless/tables/host_table.h"

namespace headless {

namespace {

Host* currentHost = nullptr;

LineSink orElse(LineSink sink, LineSink standard) {
    return sink ? std::move(sink) : std::move(standard);
}

std::optional<DateTime> fixedClock(const HostOptions& options) {
    if (options.fixedClock) {
        return options.fixedClock;
    }
    const std::string text = Quenza::PlatformUtils::environment("QUENZA_HEADLESS_CLOCK").toStdString();
    if (text.empty()) {
        return std::nullopt;
    }
    const std::optional<DateTime> clock = Clock::parse(text);
    if (!clock) {
        throw HostError("QUENZA_HEADLESS_CLOCK is \"" + text + "\"; a date reads \"YYYY-MM-DD hh:mm:ss\"");
    }
    return clock;
}

std::unique_ptr<DrivenClock> drivenClock(const HostOptions& options, MainLoop& loop) {
    return options.drivenClock ? std::make_unique<DrivenClock>([&loop] { loop.wake(); }) : nullptr;
}

} // namespace

Host::Host(HostOptions options)
    : console_(orElse(options.consoleSink, [this](const std::string& line) { terminal_.print(line); })),
      errors_(orElse(options.errorSink, [this](const std::string& line) { terminal_.printError(line); })),
      status_(orElse(options.statusSink, [this](const std::string& line) { terminal_.showStatus(line); }),
              options.statusTextSink),
      clock_(fixedClock(options), drivenClock(options, loop_)),
      startupPath_(options.startupPath.empty() ? platform::executablePath().parent_path()
                                               : std::move(options.startupPath)) {
    if (currentHost) {
        throw HostError("A host runs already in this process");
    }
    currentHost = this;
    constexpr int32_t CENTIMETRES = 3;
    worldPreferences_.SetLong(WPREF_UNITS_BASIC, CENTIMETRES);
    SetHostTables(hostTable());
    setWarningSink([this](const std::string& text) { errors_.print(text); });
}

Host::~Host() {
    unloadPlugin();
    document_.reset();
    setActiveDocument(nullptr);
    setWarningSink({});
    currentHost = nullptr;
}

Host& Host::current() {
    return *currentHost;
}

void Host::loadPlugin(const std::filesystem::path& file) {
    if (plugin_) {
        throw HostError("A plug-in is loaded already");
    }
    const std::filesystem::path full = std::filesystem::absolute(file).lexically_normal();
    auto plugin = std::make_unique<Plugin>(full, *hostTable());
    plugin_ = std::move(plugin);
    resources_ = std::make_unique<resources::ResourceFolder>(plugin_->folder() / "res");
    hasTexts_ = plugin_->loadResources();
    if (!hasTexts_) {
        errors_.print(Quenza::utf8Path(full) + ": its texts could not be loaded");
    }
    started_ = plugin_->start();
    if (!started_) {
        errors_.print(Quenza::utf8Path(full) + ": its start failed after " +
                      std::to_string(registrations_.all().size()) + " registrations, which stay in use");
    }
    buildMenus();
    loop_.runPosted();
}

void Host::buildMenus() {
    if (plugin_) {
        plugin_->buildMenus();
    }
}

void Host::unloadPlugin() {
    if (!plugin_) {
        return;
    }
    dialogs_.closeAll();
    endWorkOnDocument();
    // They may be at work on the document.
    threads_.endAll();
    // Messages on their way may own memory that their receiver frees.
    loop_.runPosted();
    setActiveDocument(nullptr);
    document_.reset();
    previewScenes_.clear();
    try {
        plugin_->end();
    } catch (const HostError& error) {
        errors_.print(error.what());
    }
    registrations_.clear();
    NodeTypes::instance().removePluginTypes();
    strings_.reset();
    resources_.reset();
    plugin_.reset();
    threads_.clear();
    started_ = false;
}

void Host::beforeClose(const void* owner, std::function<void()> task) {
    forgetClose(owner);
    closeTasks_.emplace_back(owner, std::move(task));
}

void Host::forgetClose(const void* owner) {
    std::erase_if(closeTasks_, [owner](const auto& entry) { return entry.first == owner; });
}

void Host::endWorkOnDocument() {
    for (const auto& [owner, task] : std::exchange(closeTasks_, {})) {
        task();
    }
}

void Host::open(std::unique_ptr<Document> document) {
    endWorkOnDocument();
    setActiveDocument(document.get());
    document_ = std::move(document);
}

const Registration& Host::requireCommand(int32_t id) const {
    const Registration* const found = registrations_.find(id);
    if (!found || !found->command) {
        throw HostError("There is no command " + std::to_string(id) +
                        (plugin_ ? " in " + Quenza::utf8Path(plugin_->file()) : ""));
    }
    return *found;
}

bool Host::isCommandEnabled(int32_t id) {
    const Registration* const found = registrations_.find(id);
    return found && found->command && (found->command->GetState(toHost(document_.get())) & CMD_ENABLED) != 0;
}

bool Host::executeCommand(int32_t id) {
    const Registration& found = requireCommand(id);
    const std::string name = "The command \"" + found.info.name.GetUtf8() + "\"";
    BaseDocument* const document = toHost(document_.get());
    try {
        if ((found.command->GetState(document) & CMD_ENABLED) == 0) {
            throw HostError(name + " is disabled");
        }
        const bool result = found.command->Execute(document);
        loop_.runPosted();
        return result;
    } catch (const HostError&) {
        throw;
    } catch (const std::exception& error) {
        throw HostError(name + " ended with an exception: " + error.what());
    }
}

bool Host::restoreLayout(int32_t commandId, int32_t width, int32_t height) {
    const Registration& found = requireCommand(commandId);
    WindowPlace place{commandId, width, height};
    return guardedCall(errors_, "RestoreLayout of \"" + found.info.name.GetUtf8() + "\"",
                       [&] { return found.command->RestoreLayout(&place); });
}

bool Host::runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
    return loop_.runUntil(done, MainLoop::SteadyClock::now() + limit);
}

void Host::advance(std::chrono::milliseconds length) {
    DrivenClock* const clock = clock_.driven();
    if (!clock) {
        throw HostError("The clock of this host can't be moved");
    }
    const MainLoop::Serving serving(loop_); // A thread may ask as soon as the clock has woken it.
    const DrivenClock::Time target = clock->now() + length;
    while (true) {
        settle();
        const std::optional<DrivenClock::Time> wake = clock->nextWake();
        const MainLoop::Deadline timer = loop_.nextTimer();
        DrivenClock::Time next = wake.value_or(DrivenClock::Time::max());
        if (timer) {
            next = std::min(next, std::chrono::duration_cast<DrivenClock::Time>(timer->time_since_epoch()));
        }
        if (next > target) {
            break;
        }
        clock->moveTo(next);
        settle();
        loop_.runDueTimers();
    }
    clock->moveTo(target);
}

void Host::settle() {
    constexpr std::chrono::minutes LIMIT{2};
    const MainLoop::Deadline deadline = MainLoop::SteadyClock::now() + LIMIT;
    do {
        if (!loop_.serveCallsUntil([this] { return threads_.allRest(); }, deadline)) {
            throw HostError("A thread of the plug-in comes neither to a sleep nor to its end");
        }
        // This may start threads.
        loop_.runPosted();
    } while (!threads_.allRest());
}

void Host::sleep(std::chrono::milliseconds length) {
    if (loop_.isMainThread()) {
        errors_.print("GeSleep was called by the main thread, which freezes the window");
    }
    if (!clock_.driven()) {
        std::this_thread::sleep_for(length);
    } else if (loop_.isMainThread()) {
        advance(length);
    } else {
        clock_.driven()->sleep(length, Thread::current());
    }
}

void Host::interrupt() {
    interrupted_ = true;
    loop_.post([this] { dialogs_.requestCloseOfTop(); });
}

std::vector<std::string> Host::messages() const {
    std::vector<std::string> texts;
    for (const Interaction& interaction : user_.interactions()) {
        if (interaction.kind == Interaction::Kind::message) {
            texts.push_back(interaction.text);
        }
    }
    return texts;
}

bool Host::loadStrings(const std::filesystem::path& pluginFolder) {
    auto folder = std::make_unique<resources::ResourceFolder>(pluginFolder / "res");
    const resources::Loaded<resources::StringTable> loaded = folder->strings();
    if (!loaded) {
        errors_.print(loaded.error);
        return false;
    }
    strings_ = std::move(folder);
    return true;
}

std::string Host::string(int32_t id) {
    return strings_ ? strings_->loadString(id).value_or("") : "";
}

const resources::Description* Host::descriptionOf(int32_t pluginId) {
    const Registration* const registration = registrations_.find(pluginId);
    if (!registration || !registration->info.description.Content() || !resources_) {
        return nullptr;
    }
    const auto loaded = resources_->loadDescription(registration->info.description.GetUtf8());
    if (!loaded) {
        errors_.print(loaded.error);
    }
    return loaded.value;
}

void Host::sendCoreMessage(int32_t id, uintptr_t parameter1, uintptr_t parameter2) {
    loop_.post([this, id, parameter1, parameter2] {
        BaseContainer message(id);
        message.SetVoid(BFM_CORE_PAR1, reinterpret_cast<void*>(parameter1));
        message.SetVoid(BFM_CORE_PAR2, reinterpret_cast<void*>(parameter2));
        deliverCoreMessage(id, message);
    });
}

void Host::tellOfChange() {
    if (changeIsOnItsWay_.exchange(true)) {
        return;
    }
    loop_.post([this] {
        changeIsOnItsWay_ = false;
        deliverCoreMessage(EVMSG_CHANGE, BaseContainer(EVMSG_CHANGE));
    });
}

void Host::deliverCoreMessage(int32_t id, const BaseContainer& message) {
    for (const std::unique_ptr<Registration>& registration : registrations_.all()) {
        if (!registration->message) {
            continue;
        }
        try {
            registration->message->CoreMessage(id, message);
        } catch (const std::exception& error) {
            errors_.print("The message handler \"" + registration->info.name.GetUtf8() +
                          "\" ended with an exception: " + error.what());
        }
    }
    dialogs_.coreMessage(id, message);
}

bool Host::onMainThread(const char* what, const std::function<void()>& task) {
    if (loop_.call(task)) {
        return true;
    }
    errors_.print(std::string(what) +
                  " was called from another thread while the main thread does not wait: refused");
    return false;
}

} // namespace headless
